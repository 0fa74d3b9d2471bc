#include "Views/Dashboard/DashboardReadings.h"

#include "Model/DecimalText.h"
#include "Model/MetricTraits.h"

#include <utility>

namespace {

QStringList breakdownOf(const MemoryInfo &memory)
{
    return {DashboardReadings::tr("Active: %1G").arg(gibibyteText(memory.activeBytes)),
            DashboardReadings::tr("Wired: %1G").arg(gibibyteText(memory.wiredBytes)),
            DashboardReadings::tr("Compressed: %1G").arg(gibibyteText(memory.compressedBytes))};
}

QList<FanRow> rowsOf(const QList<FanReading> &fans)
{
    QList<FanRow> rows;
    for (const FanReading &fan : fans) {
        FanRow row;
        if (fans.size() >= 2)
            row.label = DashboardReadings::tr("Fan %1").arg(rows.size() + 1);
        row.speed = valueText(SystemMetric::FanSpeed, fan.rpm);
        if (fan.min && fan.max)
            row.range = DashboardReadings::tr("Range: %1 - %2 RPM")
                            .arg(decimalText(*fan.min, 0), decimalText(*fan.max, 0));
        rows << row;
    }
    return rows;
}

} // namespace

int DashboardReadings::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant DashboardReadings::data(const QModelIndex &index, int role) const
{
    const Row &row = m_rows.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Card:
        return QVariant::fromValue(row.card);
    case Breakdown:
        return row.breakdown;
    case PerCoreUsage:
        return QVariant::fromValue(row.perCoreUsage);
    case Fans:
        return QVariant::fromValue(row.fans);
    default:
        return {};
    }
}

QHash<int, QByteArray> DashboardReadings::roleNames() const
{
    return {
        {Card, "card"}, {Breakdown, "breakdown"}, {PerCoreUsage, "perCoreUsage"}, {Fans, "fans"}};
}

void DashboardReadings::componentComplete()
{
    refresh();
}

void DashboardReadings::setActive(bool active)
{
    if (active == isActive())
        return;
    m_scope.reset();
    if (active) {
        m_scope = std::make_unique<ObservationScope>(
            [this] {
                m_viewModel->sample();
                for (const SystemMetric metric : dashboardMetrics)
                    m_settings->thresholds(metric);
            },
            [this] { refresh(); });
        refresh();
    }
    emit activeChanged();
}

void DashboardReadings::refresh()
{
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        Row row = makeRow(dashboardMetrics.at(i));
        QList<int> roles;
        const auto take = [&](auto Row::*part, Role role) {
            if (m_rows.at(i).*part == row.*part)
                return;
            m_rows.at(i).*part = std::move(row.*part);
            roles << role;
        };
        take(&Row::card, Card);
        take(&Row::breakdown, Breakdown);
        take(&Row::perCoreUsage, PerCoreUsage);
        take(&Row::fans, Fans);
        const QModelIndex place = index(static_cast<int>(i));
        if (!roles.isEmpty())
            emit dataChanged(place, place, roles);
    }
}

DashboardReadings::Row DashboardReadings::makeRow(SystemMetric metric) const
{
    const MetricTraits &traits = traitsOf(metric);
    const MetricSample sample = m_viewModel->sample();
    const MetricRecord record = m_viewModel->record(metric);
    const Thresholds thresholds = m_settings->thresholds(metric);
    Row row{.card = {.isPresent = m_viewModel->isPresent(metric),
                     .title = traits.name(),
                     .value = cardText(metric, sample),
                     .tier = tierOf(record.value, thresholds),
                     .thresholds = thresholds,
                     .sparklineData = record.history,
                     .high = record.high,
                     .low = record.low,
                     .unit = traits.unit},
            .breakdown = {},
            .perCoreUsage = {},
            .fans = {}};
    if (metric == SystemMetric::MemoryUsage && sample.memory)
        row.breakdown = breakdownOf(*sample.memory);
    if (metric == SystemMetric::CpuUsage && sample.processors)
        row.perCoreUsage = sample.processors->perCoreUsage;
    if (metric == SystemMetric::FanSpeed && sample.fans)
        row.fans = rowsOf(sample.fans->fans);
    return row;
}
