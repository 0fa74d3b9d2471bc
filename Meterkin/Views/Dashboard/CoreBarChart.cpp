#include "Views/Dashboard/CoreBarChart.h"

#include "Model/MetricTraits.h"
#include "Model/ThresholdTier.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr double Gap = 2.0;
constexpr double CornerRadius = 2.0;
constexpr double LeastHeight = 2.0;
constexpr double LeastWidth = 1.0; // unless there are more cores than pixels

} // namespace

QList<QRectF> coreBars(const QList<double> &perCoreUsage, double width, double barHeight)
{
    const auto count = static_cast<double>(perCoreUsage.size());
    const double barWidth =
        std::max((width - Gap * (count - 1.0)) / count, std::min(LeastWidth, width / count));
    const double step = count > 1.0 ? (width - barWidth) / (count - 1.0) : 0.0;
    QList<QRectF> bars;
    bars.reserve(perCoreUsage.size());
    for (const double usage : perCoreUsage) {
        const double height = std::min(std::max(usage / 100.0 * barHeight, LeastHeight), barHeight);
        bars.emplace_back(step * static_cast<double>(bars.size()), barHeight - height, barWidth,
                          height);
    }
    return bars;
}

CoreBarChart::CoreBarChart(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &CoreBarChart::changed, this, [this] { update(); });
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
    painter->setPen(Qt::NoPen);
    const QList<QRectF> bars = coreBars(m_perCoreUsage, width(), m_barHeight);
    for (qsizetype i = 0; i < bars.size(); ++i) {
        const ThresholdTier tier =
            tierOf(m_perCoreUsage.at(i), {m_greenThreshold, m_yellowThreshold});
        painter->setBrush(tier == ThresholdTier::Green        ? m_green
                              : tier == ThresholdTier::Yellow ? m_yellow
                                                              : m_red);
        // Qt limits the radius to half the width of a thin bar.
        painter->drawRoundedRect(bars.at(i), CornerRadius, CornerRadius);
    }
}
