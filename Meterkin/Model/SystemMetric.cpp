#include "Model/SystemMetric.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

QString titleOf(SystemMetric metric)
{
    switch (metric) {
    case SystemMetric::fanSpeed:
        return QStringLiteral("Fan Speed");
    case SystemMetric::memoryUsage:
        return QStringLiteral("Memory");
    case SystemMetric::cpuUsage:
        return QStringLiteral("CPU Usage");
    }
    return {};
}

std::optional<SystemMetric> metricFromRawValue(QStringView rawValue)
{
    const auto found = std::ranges::find(allMetrics, rawValue, titleOf);
    return found == allMetrics.end() ? std::nullopt : std::optional(*found);
}

QString valueText(SystemMetric metric, std::optional<double> value)
{
    if (!value || !std::isfinite(*value))
        return QStringLiteral("N/A");
    // The largest double has 309 digits. QString's own formatting rounds halves up, printf to even.
    std::array<char, 320> digits{};
    // Adding zero turns a negative zero into a plain one: "-0%" would look like a fault.
    std::snprintf(digits.data(), digits.size(), "%.0f", std::rint(*value) + 0.0);
    const QString unit =
        metric == SystemMetric::fanSpeed ? QStringLiteral(" RPM") : QStringLiteral("%");
    return QLatin1StringView(digits.data()) + unit;
}

QString widestText(SystemMetric metric)
{
    return valueText(metric, metric == SystemMetric::fanSpeed ? 9999.0 : 100.0);
}
