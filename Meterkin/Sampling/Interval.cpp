#include "Sampling/Interval.h"

#include <algorithm>

double intervalInEffect(double stored)
{
    // In this order a NaN gives the default.
    return stored > 0.0 ? std::clamp(stored, ShortestInterval, LongestInterval) : DefaultInterval;
}
