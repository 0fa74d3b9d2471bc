#pragma once

#include <QList>

/// One CPU sample: busy percentages, 0 to 100.
struct CPUInfo {
    double aggregateUsage = 0.0; ///< the mean of the cores
    QList<double> perCoreUsage; ///< one value per core, in the kernel's order

    bool operator==(const CPUInfo &) const = default;
};
