#include "Model/MetricTraits.h"

#include "Model/DecimalText.h"
#include "Sampling/MetricSample.h"

#include <QCoreApplication>

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
        .rawValue = QStringLiteral("Fan Speed"),
        .englishTitle = QT_TRANSLATE_NOOP("MetricTraits", "Fan Speed"),
        .englishName = QT_TRANSLATE_NOOP("MetricTraits", "Fan Speed"),
        .unit = QStringLiteral(" RPM"),
        .englishAlert = QT_TRANSLATE_NOOP("MetricTraits", "Fan speed is %1"),
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
        .rawValue = QStringLiteral("Memory"),
        .englishTitle = QT_TRANSLATE_NOOP("MetricTraits", "Memory"),
        .englishName = QT_TRANSLATE_NOOP("MetricTraits", "Memory Usage"),
        .unit = QStringLiteral("%"),
        .englishAlert = QT_TRANSLATE_NOOP("MetricTraits", "Memory usage is %1"),
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
        .rawValue = QStringLiteral("CPU Usage"),
        .englishTitle = QT_TRANSLATE_NOOP("MetricTraits", "CPU Usage"),
        .englishName = QT_TRANSLATE_NOOP("MetricTraits", "CPU Usage"),
        .unit = QStringLiteral("%"),
        .englishAlert = QT_TRANSLATE_NOOP("MetricTraits", "CPU usage is %1"),
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

QString MetricTraits::title() const
{
    return QCoreApplication::translate("MetricTraits", englishTitle);
}

QString MetricTraits::name() const
{
    return QCoreApplication::translate("MetricTraits", englishName);
}

QString MetricTraits::alertText(const QString &value) const
{
    return QCoreApplication::translate("MetricTraits", englishAlert).arg(value);
}

const MetricTraits &traitsOf(SystemMetric metric)
{
    return table.at(static_cast<std::size_t>(metric));
}

std::optional<SystemMetric> metricFromRawValue(QStringView rawValue)
{
    const auto found = std::ranges::find(allMetrics, rawValue, [](SystemMetric metric) {
        return QStringView(traitsOf(metric).rawValue);
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
