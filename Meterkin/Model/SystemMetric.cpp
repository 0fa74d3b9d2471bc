#include "Model/SystemMetric.h"

#include "Model/DecimalText.h"

#include <algorithm>
#include <cmath>

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
    const QString unit =
        metric == SystemMetric::fanSpeed ? QStringLiteral(" RPM") : QStringLiteral("%");
    return decimalText(*value, 0) + unit;
}

QString widestText(SystemMetric metric)
{
    return valueText(metric, metric == SystemMetric::fanSpeed ? 9999.0 : 100.0);
}
