#pragma once

#include <QColor>
#include <QProperty>
#include <QQuickPaintedItem>

/// A soft round light that fades out towards the item's edges. Painted once: to let it pulse,
/// change its opacity.
class OnboardingGlow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

signals:
    void colorChanged();

private:
    QColor m_color;
};
