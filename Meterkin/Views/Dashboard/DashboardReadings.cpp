#include "Views/Dashboard/DashboardReadings.h"

#include "Model/DecimalText.h"

namespace {

constexpr double BytesPerGibibyte = 1024.0 * 1024.0 * 1024.0;
const QString absentText = QStringLiteral("N/A");
const QString percentUnit = QStringLiteral("%");
const QString speedUnit = QStringLiteral(" RPM");

QString gibibytes(std::uint64_t bytes)
{
    return decimalText(static_cast<double>(bytes) / BytesPerGibibyte, 1);
}

} // namespace

void DashboardReadings::componentComplete()
{
    const bool isActive = m_isActive;
    setActive(true);
    setActive(isActive);
}

void DashboardReadings::setActive(bool active)
{
    if (m_isActive == active)
        return;
    m_isActive = active;
    if (active) {
        m_memory.setBinding([this] { return memoryCard(); });
        m_memoryBreakdown.setBinding([this] { return memoryBreakdownTexts(); });
        m_cpu.setBinding([this] { return cpuCard(); });
        m_perCoreUsage.setBinding([this] {
            const std::optional<CPUInfo> info = m_viewModel->cpuInfo();
            return info ? info->perCoreUsage : QList<double>();
        });
        m_fan.setBinding([this] { return fanCard(); });
        m_hasFans.setBinding([this] { return m_viewModel->fanCount() >= 1; });
        m_fans.setBinding([this] { return fanRows(); });
    } else {
        m_memory.takeBinding();
        m_memoryBreakdown.takeBinding();
        m_cpu.takeBinding();
        m_perCoreUsage.takeBinding();
        m_fan.takeBinding();
        m_hasFans.takeBinding();
        m_fans.takeBinding();
    }
    emit activeChanged();
}

MetricCard DashboardReadings::memoryCard() const
{
    const std::optional<MemoryInfo> info = m_viewModel->memoryInfo();
    const std::optional<double> percent = info ? std::optional(info->usagePercent()) : std::nullopt;
    return {.title = QStringLiteral("Memory Usage"),
            .value = info ? QStringLiteral("%1 / %2 GB (%3%)")
                                .arg(gibibytes(info->usedBytes()), gibibytes(info->totalBytes),
                                     decimalText(*percent, 0))
                          : absentText,
            .tier = tierOf(percent, m_settings->thresholds(SystemMetric::memoryUsage)),
            .sparklineData = m_viewModel->memoryHistory(),
            .high = m_viewModel->memoryHigh(),
            .low = m_viewModel->memoryLow(),
            .unit = percentUnit};
}

QStringList DashboardReadings::memoryBreakdownTexts() const
{
    const std::optional<MemoryInfo> info = m_viewModel->memoryInfo();
    if (!info)
        return {};
    return {QStringLiteral("Active: %1G").arg(gibibytes(info->activeBytes)),
            QStringLiteral("Wired: %1G").arg(gibibytes(info->wiredBytes)),
            QStringLiteral("Compressed: %1G").arg(gibibytes(info->compressedBytes))};
}

MetricCard DashboardReadings::cpuCard() const
{
    const std::optional<double> usage = m_viewModel->currentValue(SystemMetric::cpuUsage);
    return {.title = QStringLiteral("CPU Usage"),
            .value = usage ? decimalText(*usage, 1) + percentUnit : absentText,
            .tier = tierOf(usage, m_settings->thresholds(SystemMetric::cpuUsage)),
            .sparklineData = m_viewModel->cpuUsageHistory(),
            .high = m_viewModel->cpuUsageHigh(),
            .low = m_viewModel->cpuUsageLow(),
            .unit = percentUnit};
}

MetricCard DashboardReadings::fanCard() const
{
    const std::optional<double> speed = m_viewModel->currentValue(SystemMetric::fanSpeed);
    return {.title = QStringLiteral("Fan Speed"),
            .value = m_viewModel->displayText(SystemMetric::fanSpeed),
            .tier = tierOf(speed, m_settings->thresholds(SystemMetric::fanSpeed)),
            .sparklineData = m_viewModel->fanSpeedHistory(),
            .high = m_viewModel->fanSpeedHigh(),
            .low = m_viewModel->fanSpeedLow(),
            .unit = speedUnit};
}

QList<FanRow> DashboardReadings::fanRows() const
{
    QList<FanRow> rows;
    const QList<FanReading> fans = m_viewModel->fanSpeeds();
    for (const FanReading &fan : fans) {
        FanRow row;
        if (fans.size() >= 2)
            row.label = QStringLiteral("Fan %1").arg(rows.size() + 1);
        if (fan.min && fan.max)
            row.range = QStringLiteral("Range: %1 - %2 RPM")
                            .arg(decimalText(*fan.min, 0), decimalText(*fan.max, 0));
        rows << row;
    }
    return rows;
}
