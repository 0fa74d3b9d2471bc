#include "Views/Dashboard/SparklineView.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>

namespace {

constexpr double EdgeDistance = 2.0;
constexpr double LineWidth = 1.5;
constexpr float LineOpacity = 0.6F;
constexpr float AreaOpacity = 0.1F;

QColor faded(QColor color, float opacity)
{
    color.setAlphaF(color.alphaF() * opacity);
    return color;
}

} // namespace

QList<QPointF> sparklinePoints(const QList<double> &data, QSizeF size)
{
    if (data.size() < 2)
        return {};
    const auto [low, high] = std::minmax_element(data.cbegin(), data.cend());
    const double range = *high - *low;
    const double divisor = range > 0.0 ? range : 1.0;
    const double step = size.width() / static_cast<double>(data.size() - 1);
    QList<QPointF> points;
    points.reserve(data.size());
    for (const double value : data)
        points.emplace_back(step * static_cast<double>(points.size()),
                            (size.height() - EdgeDistance)
                                - (size.height() - 2 * EdgeDistance) * ((value - *low) / divisor));
    return points;
}

void SparklineView::setData(const QList<double> &data)
{
    if (m_data == data)
        return;
    m_data = data;
    update();
    emit dataChanged();
}

void SparklineView::setLineColor(const QColor &color)
{
    if (m_lineColor == color)
        return;
    m_lineColor = color;
    update();
    emit lineColorChanged();
}

void SparklineView::paint(QPainter *painter)
{
    const QPolygonF line(sparklinePoints(m_data, size()));
    if (line.isEmpty())
        return;
    QPolygonF area = line;
    area.prepend(QPointF(line.first().x(), height()));
    area.append(QPointF(line.last().x(), height()));
    painter->setPen(Qt::NoPen);
    painter->setBrush(faded(m_lineColor, AreaOpacity));
    painter->drawPolygon(area);

    // A path, not a polyline, because that ignores the miter limit.
    QPainterPath path;
    path.addPolygon(line);
    QPen pen(faded(m_lineColor, LineOpacity), LineWidth, Qt::SolidLine, Qt::FlatCap,
             Qt::SvgMiterJoin);
    pen.setMiterLimit(10.0);
    painter->strokePath(path, pen);
}
