#pragma once

#include "Views/DrawnItem.h"

#include <QColor>

class PixelGrid;

/// How a plate looks, in logical pixels.
struct PlateStyle {
    QColor color = Qt::transparent;
    double radius = 0.0;
    QColor lineColor = Qt::transparent; ///< clear: no line
    double lineWidth = 0.5; ///< within the shape; never less than a pixel of the screen
};

/// Draws a plate over the pixels of the rectangle.
void drawPlate(QPainter &painter, const PixelGrid &grid, const QRectF &rect,
               const PlateStyle &style);

/// The shape below every control: a rounded rectangle with a line along its edge, on whole pixels
/// of the screen. Its properties are those of its style. Main thread only.
class Plate : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed FINAL)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed FINAL)
    Q_PROPERTY(QColor lineColor MEMBER m_lineColor NOTIFY changed FINAL)
    Q_PROPERTY(double lineWidth MEMBER m_lineWidth NOTIFY changed FINAL)

public:
    explicit Plate(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

signals:
    void changed();

private:
    QColor m_color = PlateStyle().color;
    double m_radius = PlateStyle().radius;
    QColor m_lineColor = PlateStyle().lineColor;
    double m_lineWidth = PlateStyle().lineWidth;
};
