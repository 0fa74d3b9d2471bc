#include "Views/Settings/ThresholdEntry.h"

#include "Model/MetricTraits.h"

#include <algorithm>
#include <cmath>

namespace {

const MetricTraits &traitsOf(int metric)
{
    return traitsOf(static_cast<SystemMetric>(metric));
}

} // namespace

double ThresholdEntry::minimum(int metric) const
{
    return traitsOf(metric).lowest;
}

double ThresholdEntry::maximum(int metric) const
{
    return traitsOf(metric).highest;
}

double ThresholdEntry::step(int metric) const
{
    return traitsOf(metric).step;
}

QString ThresholdEntry::text(int metric, double value) const
{
    return valueText(static_cast<SystemMetric>(metric), value);
}

double ThresholdEntry::entered(int metric, const QString &typed, double value) const
{
    const MetricTraits &traits = traitsOf(metric);
    const QString unit = traits.unit.trimmed();
    QString digits = typed.trimmed();
    if (digits.endsWith(unit, Qt::CaseInsensitive))
        digits = digits.chopped(unit.size()).trimmed();
    bool isNumber = false;
    const double number = digits.toDouble(&isNumber);
    // A number that is too large for a double is parsed as infinity.
    if (std::isnan(number) || (!isNumber && !std::isinf(number)))
        return value;
    const double within = std::clamp(number, traits.lowest, traits.highest);
    return std::round(within / traits.step) * traits.step;
}

double ThresholdEntry::stepped(int metric, double value, int steps) const
{
    const MetricTraits &traits = traitsOf(metric);
    if (std::isnan(value))
        return traits.lowest;
    if (steps > 0 ? value >= traits.highest : value <= traits.lowest)
        return value;
    return std::clamp(value + steps * traits.step, traits.lowest, traits.highest);
}
