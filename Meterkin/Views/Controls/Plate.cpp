#include "Views/Controls/Plate.h"

#include "Views/PixelGrid.h"

#include <QPainter>

void drawPlate(QPainter &painter, const PixelGrid &grid, const QRectF &rect,
               const PlateStyle &style)
{
    const QRectF shape = grid.pixels(rect);
    const double radius = style.radius * grid.scale();
    if (style.color.alpha() > 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.color);
        painter.drawRoundedRect(shape, radius, radius);
    }
    if (style.lineColor.alpha() > 0) {
        const int line = grid.pixels(style.lineWidth);
        const double half = line / 2.0;
        painter.setPen(QPen(style.lineColor, line));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(shape.adjusted(half, half, -half, -half), radius - half,
                                radius - half);
    }
}

Plate::Plate(QQuickItem *parent)
    : DrawnItem(parent)
{
    connect(this, &Plate::changed, this, &QQuickItem::update);
}

void Plate::paint(QPainter *painter)
{
    drawPlate(
        *painter, PixelGrid(*painter), boundingRect(),
        {.color = m_color, .radius = m_radius, .lineColor = m_lineColor, .lineWidth = m_lineWidth});
}
