#pragma once

#include "Platform/FanSource.h"
#include "Sampling/CPUInfo.h"
#include "Sampling/MemoryInfo.h"

#include <optional>

/// Everything read from the machine at one moment.
struct MetricSample {
    std::optional<FanSample> fans; ///< absent until they have been read once
    std::optional<MemoryInfo> memory;
    std::optional<CPUInfo> processors;

    bool operator==(const MetricSample &) const = default;
};
