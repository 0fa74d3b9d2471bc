#include "Views/Settings/Metrics.h"

#include "Model/MetricTraits.h"

QList<int> Metrics::all() const
{
    QList<int> metrics;
    for (const SystemMetric metric : allMetrics)
        metrics << static_cast<int>(metric);
    return metrics;
}

QStringList Metrics::titles() const
{
    QStringList titles;
    for (const SystemMetric metric : allMetrics)
        titles << traitsOf(metric).title();
    return titles;
}
