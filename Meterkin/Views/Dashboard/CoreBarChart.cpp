#include "Views/Dashboard/CoreBarChart.h"

#include "Model/MetricTraits.h"
#include "Model/ThresholdTier.h"
#include "Views/PixelGrid.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// Logical pixels.
constexpr double Gap = 2.0;
constexpr double CornerRadius = 2.0;
constexpr double LeastHeight = 2.0;

int wholePixels(double length)
{
    return static_cast<int>(std::lround(length));
}

} // namespace

QList<QRect> coreBars(const QList<double> &perCoreUsage, QSize chart, double scale)
{
    const auto count = static_cast<int>(perCoreUsage.size());
    const int gap = std::clamp(chart.width() / std::max(count, 1) - 1, 0, wholePixels(Gap * scale));
    const double step = double(chart.width() + gap) / std::max(count, 1);
    const int least = wholePixels(LeastHeight * scale);
    QList<QRect> bars;
    bars.reserve(count);
    for (int i = 0; i < count; ++i) {
        const int left = static_cast<int>(step * i);
        const int width = std::max(static_cast<int>(step * (i + 1)) - gap - left, 1);
        const int height = std::clamp(wholePixels(perCoreUsage.at(i) / 100.0 * chart.height()),
                                      least, chart.height());
        bars.emplace_back(left, chart.height() - height, width, height);
    }
    return bars;
}

CoreBarChart::CoreBarChart(QQuickItem *parent)
    : DrawnItem(parent)
{
    connect(this, &CoreBarChart::changed, this, &QQuickItem::update);
}

void CoreBarChart::setPerCoreUsage(const QList<double> &usage)
{
    if (m_perCoreUsage == usage)
        return;
    m_perCoreUsage = usage;
    emit changed();
}

QString CoreBarChart::text() const
{
    QStringList parts;
    for (const double usage : m_perCoreUsage)
        parts << valueText(SystemMetric::CpuUsage, usage);
    return parts.join(QStringLiteral(", "));
}

void CoreBarChart::setBarHeight(double height)
{
    m_barHeight = height;
    setImplicitHeight(height);
    emit changed();
}

void CoreBarChart::paint(QPainter *painter)
{
    const PixelGrid grid(*painter);
    const QRect chart = grid.pixels(QRectF(0, 0, width(), m_barHeight));
    const double radius = CornerRadius * grid.scale();
    painter->translate(chart.topLeft());
    painter->setPen(Qt::NoPen);
    const QList<QRect> bars = coreBars(m_perCoreUsage, chart.size(), grid.scale());
    for (qsizetype i = 0; i < bars.size(); ++i) {
        QRect track = bars.at(i);
        track.setTop(0);
        painter->setBrush(m_track);
        // Qt limits the radius to half the width of a thin bar.
        painter->drawRoundedRect(track, radius, radius);
        const ThresholdTier tier =
            tierOf(m_perCoreUsage.at(i), {m_greenThreshold, m_yellowThreshold});
        painter->setBrush(tier == ThresholdTier::Green        ? m_green
                              : tier == ThresholdTier::Yellow ? m_yellow
                                                              : m_red);
        painter->drawRoundedRect(bars.at(i), radius, radius);
    }
}
