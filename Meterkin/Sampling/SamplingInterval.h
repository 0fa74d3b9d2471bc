#pragma once

#include <limits>

// Seconds between two samples.
inline constexpr double DefaultInterval = 3.0;
inline constexpr double ShortestInterval = 0.1;
inline constexpr double LongestInterval = std::numeric_limits<int>::max() / 1000.0; // a timer's

/// What a stored interval comes to: the default for one that is not above 0 or no number, else the
/// nearest within the limits.
double intervalInEffect(double stored);
