#pragma once

#include "Views/DrawnItem.h"

#include <QColor>
#include <QImage>

class PixelGrid;

/// How a popover's edge looks.
enum class FrameStyle {
    Square, ///< opaque, without a shadow
    Rounded, ///< in a transparent window, with a shadow
};

/// Background, border and shadow behind a popover's content, in the colours of the content's
/// properties `background` and `border`.
class PopoverFrame : public DrawnItem {
    Q_OBJECT

public:
    explicit PopoverFrame(FrameStyle style, QQuickItem *parent = nullptr);

    /// Takes the content's colours, now and whenever they change.
    void follow(QQuickItem &content);

    FrameStyle style() const { return m_style; }
    const QColor &background() const { return m_background; }
    /// Room for the shadow between the edges of the item and the border, logical pixels.
    int margin() const;

    void paint(QPainter *painter) override;

signals:
    void backgroundChanged();

private slots:
    void readColors();

private:
    void paintShadow(QPainter &painter, const PixelGrid &grid);

    const FrameStyle m_style;
    const QQuickItem *m_content = nullptr;
    QColor m_background{0xf6, 0xf6, 0xf7};
    QColor m_border{0x00, 0x00, 0x00, 0x30};
    QImage m_shadow; ///< as small as its corners allow; its middle lines are stretched
    double m_shadowScale = 0.0; ///< that it was drawn at
};
