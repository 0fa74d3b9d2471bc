#include "Views/Settings/ThresholdEntry.h"

#include "Model/SystemMetric.h"

#include <algorithm>
#include <cmath>

namespace {

struct Bounds {
    double minimum;
    double maximum;
    double step;
};

// Nothing of interest lies beyond: a threshold of 0 could never be passed, and no fan turns faster.
constexpr Bounds Percentage{1.0, 100.0, 1.0};
constexpr Bounds Revolutions{100.0, 20000.0, 100.0};

SystemMetric metricOf(int number)
{
    return static_cast<SystemMetric>(number);
}

const Bounds &boundsOf(int metric)
{
    return metricOf(metric) == SystemMetric::fanSpeed ? Revolutions : Percentage;
}

} // namespace

double ThresholdEntry::minimum(int metric) const
{
    return boundsOf(metric).minimum;
}

double ThresholdEntry::maximum(int metric) const
{
    return boundsOf(metric).maximum;
}

double ThresholdEntry::step(int metric) const
{
    return boundsOf(metric).step;
}

QString ThresholdEntry::text(int metric, double value) const
{
    return valueText(metricOf(metric), value);
}

double ThresholdEntry::entered(int metric, const QString &typed, double value) const
{
    const QString unit = valueText(metricOf(metric), 0.0).mid(1).trimmed();
    QString digits = typed.trimmed();
    if (digits.endsWith(unit, Qt::CaseInsensitive))
        digits = digits.chopped(unit.size()).trimmed();
    bool isNumber = false;
    const double number = digits.toDouble(&isNumber);
    // One that is too large to be held comes as an infinity.
    if (std::isnan(number) || (!isNumber && !std::isinf(number)))
        return value;
    const Bounds &bounds = boundsOf(metric);
    const double within = std::clamp(number, bounds.minimum, bounds.maximum);
    return std::round(within / bounds.step) * bounds.step;
}

double ThresholdEntry::stepped(int metric, double value, int steps) const
{
    const Bounds &bounds = boundsOf(metric);
    if (std::isnan(value))
        return bounds.minimum;
    if (steps > 0 ? value >= bounds.maximum : value <= bounds.minimum)
        return value;
    return std::clamp(value + steps * bounds.step, bounds.minimum, bounds.maximum);
}
