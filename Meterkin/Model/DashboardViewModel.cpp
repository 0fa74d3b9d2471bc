#include "Model/DashboardViewModel.h"

#include "Sampling/MetricCollector.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

/// Appends the value, if there is one, to the history and widens the extremes to it.
template <typename History, typename High, typename Low>
void record(std::optional<double> value, History &history, High &high, Low &low)
{
    if (!value)
        return;
    // A new list each time: one that is appended to at its end and shortened at its front grows in
    // capacity for ever.
    const QList<double> &earlier = history.value();
    QList<double> values;
    values.reserve(DashboardViewModel::HistoryLength);
    const qsizetype kept = std::min(earlier.size(), DashboardViewModel::HistoryLength - 1);
    std::copy(earlier.end() - kept, earlier.end(), std::back_inserter(values));
    values.append(*value);
    history = values;

    // An absent optional compares below every value.
    if (high.value() < value)
        high = value;
    if (!low.value() || value < low.value())
        low = value;
}

} // namespace

DashboardViewModel::DashboardViewModel(const MetricCollector &collector, QObject *parent)
    : QObject(parent)
    , m_collector(collector)
{
}

void DashboardViewModel::update()
{
    m_fanSpeeds = m_collector.latestFanSpeeds();
    m_memoryInfo = m_collector.latestMemory();
    m_cpuInfo = m_collector.latestCPUInfo();
    m_fanCount = m_collector.fanCount();

    record(currentValue(SystemMetric::fanSpeed), m_fanSpeedHistory, m_fanSpeedHigh, m_fanSpeedLow);
    record(currentValue(SystemMetric::memoryUsage), m_memoryHistory, m_memoryHigh, m_memoryLow);
    record(currentValue(SystemMetric::cpuUsage), m_cpuUsageHistory, m_cpuUsageHigh, m_cpuUsageLow);
}

std::optional<double> DashboardViewModel::currentValue(SystemMetric metric) const
{
    std::optional<double> value;
    switch (metric) {
    case SystemMetric::fanSpeed:
        if (const QList<FanReading> fans = fanSpeeds(); !fans.isEmpty())
            value = fans.first().rpm;
        break;
    case SystemMetric::memoryUsage:
        if (const std::optional<MemoryInfo> memory = memoryInfo())
            value = memory->usagePercent();
        break;
    case SystemMetric::cpuUsage:
        if (const std::optional<CPUInfo> cpu = cpuInfo())
            value = cpu->aggregateUsage;
        break;
    }
    return value && std::isfinite(*value) ? value : std::nullopt;
}

QString DashboardViewModel::displayText(SystemMetric metric) const
{
    return valueText(metric, currentValue(metric));
}
