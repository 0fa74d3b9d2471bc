#include "Views/Settings/MetricTitles.h"

#include "Model/SystemMetric.h"

QStringList MetricTitles::all() const
{
    QStringList titles;
    for (const SystemMetric metric : allMetrics)
        titles.append(titleOf(metric));
    return titles;
}
