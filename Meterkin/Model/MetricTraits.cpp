#include "Model/MetricTraits.h"

#include "Model/DecimalText.h"
#include "Sampling/MetricSample.h"

#include <algorithm>
#include <cmath>

namespace {

std::optional<double> firstFanSpeed(const MetricSample &sample)
{
    if (!sample.fans || sample.fans->fans.isEmpty())
        return std::nullopt;
    return sample.fans->fans.first().rpm;
}

bool hasFans(const MetricSample &sample)
{
    return sample.fans && sample.fans->count > 0;
}

std::optional<double> memoryUsage(const MetricSample &sample)
{
    return sample.memory ? std::optional(sample.memory->usagePercent()) : std::nullopt;
}

QString memoryText(const MetricSample &sample)
{
    const MemoryInfo &memory = *sample.memory;
    return QStringLiteral("%1 / %2 GB (%3)")
        .arg(gibibyteText(memory.usedBytes()), gibibyteText(memory.totalBytes),
             valueText(SystemMetric::MemoryUsage, memory.usagePercent()));
}

std::optional<double> cpuUsage(const MetricSample &sample)
{
    return sample.processors ? std::optional(sample.processors->aggregateUsage) : std::nullopt;
}

// In the order of the enumerators. The bounds of the settings leave out what makes no sense: a
// threshold of 0 could never be passed, and no fan turns faster.
const std::array<MetricTraits, allMetrics.size()> table{
    MetricTraits{
        .title = QStringLiteral("Fan Speed"),
        .name = QStringLiteral("Fan Speed"),
        .unit = QStringLiteral(" RPM"),
        .alertWords = QStringLiteral("Fan speed is "),
        .settingsName = QStringLiteral("fanSpeed"),
        .alertSetting = QStringLiteral("alertFanSpeed"),
        .widestValue = 9999.0,
        .standard = {2000.0, 4000.0},
        .lowest = 100.0,
        .highest = 20000.0,
        .step = 100.0,
        .valueIn = firstFanSpeed,
        .isPresentIn = hasFans,
    },
    MetricTraits{
        .title = QStringLiteral("Memory"),
        .name = QStringLiteral("Memory Usage"),
        .unit = QStringLiteral("%"),
        .alertWords = QStringLiteral("Memory usage is "),
        .settingsName = QStringLiteral("memory"),
        .alertSetting = QStringLiteral("alertMemory"),
        .widestValue = 100.0,
        .standard = {60.0, 80.0},
        .lowest = 1.0,
        .highest = 100.0,
        .valueIn = memoryUsage,
        .cardText = memoryText,
    },
    MetricTraits{
        .title = QStringLiteral("CPU Usage"),
        .name = QStringLiteral("CPU Usage"),
        .unit = QStringLiteral("%"),
        .alertWords = QStringLiteral("CPU usage is "),
        .settingsName = QStringLiteral("cpuUsage"),
        .alertSetting = QStringLiteral("alertCPUUsage"),
        .widestValue = 100.0,
        .standard = {50.0, 80.0},
        .lowest = 1.0,
        .highest = 100.0,
        .valueIn = cpuUsage,
        .cardDecimals = 1,
    },
};

} // namespace

const MetricTraits &traitsOf(SystemMetric metric)
{
    return table.at(static_cast<std::size_t>(metric));
}

std::optional<SystemMetric> metricFromRawValue(QStringView rawValue)
{
    const auto found = std::ranges::find(allMetrics, rawValue, [](SystemMetric metric) {
        return QStringView(traitsOf(metric).title);
    });
    return found == allMetrics.end() ? std::nullopt : std::optional(*found);
}

std::optional<double> valueIn(const MetricSample &sample, SystemMetric metric)
{
    const std::optional<double> value = traitsOf(metric).valueIn(sample);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

QString valueText(SystemMetric metric, std::optional<double> value, int decimals)
{
    if (!value || !std::isfinite(*value))
        return QStringLiteral("N/A");
    return decimalText(*value, decimals) + traitsOf(metric).unit;
}

std::optional<double> shownNumber(std::optional<double> value)
{
    return value && std::isfinite(*value) ? std::optional(std::nearbyint(*value)) : std::nullopt;
}

QString widestText(SystemMetric metric)
{
    return valueText(metric, traitsOf(metric).widestValue);
}

QString cardText(SystemMetric metric, const MetricSample &sample)
{
    const MetricTraits &traits = traitsOf(metric);
    const std::optional<double> value = valueIn(sample, metric);
    return value && traits.cardText != nullptr ? traits.cardText(sample)
                                               : valueText(metric, value, traits.cardDecimals);
}
