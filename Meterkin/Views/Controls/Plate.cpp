#include "Views/Controls/Plate.h"

#include "Views/PixelGrid.h"

#include <QPainter>

Plate::Plate(QQuickItem *parent)
    : DrawnItem(parent)
{
    connect(this, &Plate::changed, this, &QQuickItem::update);
}

void Plate::paint(QPainter *painter)
{
    const PixelGrid grid(*painter);
    const QRectF shape = grid.pixels(boundingRect());
    const double radius = m_radius * grid.scale();
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    painter->drawRoundedRect(shape, radius, radius);
    if (m_lineColor.alpha() == 0)
        return;
    const int line = grid.pixels(m_lineWidth);
    const double half = line / 2.0;
    painter->setPen(QPen(m_lineColor, line));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(shape.adjusted(half, half, -half, -half), radius - half,
                             radius - half);
}
