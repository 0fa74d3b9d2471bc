#pragma once

#include <limits>

// Seconds between two samples.
inline constexpr double DefaultInterval = 3.0;
inline constexpr double ShortestInterval = 0.1;
inline constexpr double LongestInterval = std::numeric_limits<int>::max() / 1000.0;

/// The interval to use for a stored one: the default when that is not a number above 0, else the
/// nearest one within the limits.
double intervalInEffect(double stored);
