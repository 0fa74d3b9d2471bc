#include "Model/DashboardViewModel.h"

#include "Model/MetricTraits.h"
#include "Sampling/MetricCollector.h"

#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// Takes in the present value. One that is absent leaves history and extremes as they are.
void take(std::optional<double> value, MetricRecord &record)
{
    record.value = value;
    if (!value)
        return;
    // A new list each time: removing at the front and appending at the end would make the capacity
    // grow without limit.
    const QList<double> earlier = std::exchange(record.history, {});
    record.history.reserve(DashboardViewModel::HistoryLength);
    const qsizetype kept = std::min(earlier.size(), DashboardViewModel::HistoryLength - 1);
    std::copy(earlier.end() - kept, earlier.end(), std::back_inserter(record.history));
    record.history.append(*value);

    record.high = std::max(*value, record.high.value_or(*value));
    record.low = std::min(*value, record.low.value_or(*value));
}

} // namespace

DashboardViewModel::DashboardViewModel(const MetricCollector &collector, QObject *parent)
    : QObject(parent)
    , m_collector(collector)
{
}

void DashboardViewModel::update()
{
    Readings readings = m_readings.value();
    readings.sample = m_collector.latestSample();
    for (const SystemMetric metric : allMetrics)
        take(valueIn(readings.sample, metric), readings.records[metric]);
    m_readings = std::move(readings);
    m_fanCount = m_collector.fanCount();
}

QString DashboardViewModel::displayText(SystemMetric metric) const
{
    return valueText(metric, currentValue(metric));
}

QString DashboardViewModel::summary() const
{
    QStringList lines;
    for (const SystemMetric metric : allMetrics)
        lines << traitsOf(metric).title + QStringLiteral(": ") + displayText(metric);
    return lines.join(u'\n');
}

bool DashboardViewModel::isPresent(SystemMetric metric) const
{
    const auto isPresentIn = traitsOf(metric).isPresentIn;
    return isPresentIn == nullptr || isPresentIn(sample());
}

QList<FanReading> DashboardViewModel::fanSpeeds() const
{
    const std::optional<FanSample> fans = sample().fans;
    return fans ? fans->fans : QList<FanReading>();
}
