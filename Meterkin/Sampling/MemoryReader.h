#pragma once

#include "Platform/PageCounters.h"
#include "Sampling/MemoryInfo.h"

#include <cstdint>
#include <memory>
#include <optional>

/// Converts the kernel's page counters into bytes. One thread at a time.
class MemoryReader {
public:
    /// `totalPhysicalMemory` in bytes is the total of every sample, whatever the counters add up
    /// to.
    MemoryReader(std::uint64_t totalPhysicalMemory, std::unique_ptr<PageCounters> source);

    /// Absent when the counters cannot be read or are larger than any memory.
    std::optional<MemoryInfo> read();

private:
    std::uint64_t m_totalPhysicalMemory;
    std::unique_ptr<PageCounters> m_source;
};
