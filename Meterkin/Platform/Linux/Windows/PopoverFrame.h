#pragma once

#include <QColor>
#include <QImage>
#include <QQuickPaintedItem>

/// How a popover's edge looks.
enum class FrameStyle {
    Square, ///< for displays that cannot show transparent windows
    Rounded, ///< with a shadow around
};

/// What is behind a popover's content: background, border and shadow. The colours are those that
/// the content has in its properties `background` and `border`, if it has them.
class PopoverFrame : public QQuickPaintedItem {
    Q_OBJECT

public:
    explicit PopoverFrame(FrameStyle style, QQuickItem *parent = nullptr);

    /// Takes its colours from there, now and whenever they change.
    void follow(QQuickItem &content);

    FrameStyle style() const { return m_style; }
    const QColor &background() const { return m_background; }
    /// From the edges of the item to the visible frame, logical pixels: room for the shadow.
    int margin() const;

    void paint(QPainter *painter) override;

signals:
    void backgroundChanged();

private slots:
    void readColors();

private:
    void paintShadow(QPainter &painter);

    const FrameStyle m_style;
    const QQuickItem *m_content = nullptr;
    QColor m_background{0xf6, 0xf6, 0xf7};
    QColor m_border{0x00, 0x00, 0x00, 0x30};
    QImage m_shadow; ///< the smallest that has all of its edges; the rest is stretched
};
