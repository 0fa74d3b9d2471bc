#include "Sampling/SamplingInterval.h"

#include <algorithm>

double intervalInEffect(double stored)
{
    // Written so that a NaN takes the default.
    return stored > 0.0 ? std::clamp(stored, ShortestInterval, LongestInterval) : DefaultInterval;
}
