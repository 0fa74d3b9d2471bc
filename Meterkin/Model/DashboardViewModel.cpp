#include "Model/DashboardViewModel.h"

#include "Model/MetricTraits.h"
#include "Sampling/MetricCollector.h"

#include <QStringList>

#include <algorithm>

namespace {

/// Takes in the present value. One that is absent leaves history and extremes as they are.
void take(std::optional<double> value, MetricRecord &record)
{
    record.value = value;
    if (!value)
        return;
    // Moved along in place: removing at the front and appending at the end would make the capacity
    // grow without limit.
    record.history.reserve(DashboardViewModel::HistoryLength);
    if (record.history.size() < DashboardViewModel::HistoryLength) {
        record.history.append(*value);
    } else {
        std::shift_left(record.history.begin(), record.history.end(), 1);
        record.history.last() = *value;
    }

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
    m_readings.sample = m_collector.latestSample();
    for (const SystemMetric metric : allMetrics)
        take(valueIn(m_readings.sample, metric), m_readings.records[metric]);
    m_updates = m_updates + 1;
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
        lines << tr("%1: %2", "a vital and its value")
                     .arg(traitsOf(metric).title(), displayText(metric));
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
