#pragma once

#include <cstdint>
#include <optional>

/// One fan sample; speeds in revolutions per minute.
struct FanReading {
    std::int64_t index = 0; ///< 0-based number of the fan, as used in its keys
    double rpm = 0.0;
    std::optional<double> min; ///< absent when the fan does not tell
    std::optional<double> max;

    bool operator==(const FanReading &) const = default;
};
