#pragma once

#include "Platform/PageCounters.h"
#include "Sampling/MemoryInfo.h"

#include <cstdint>
#include <memory>
#include <optional>

/// Converts the kernel's page counters to bytes. One thread at a time.
class MemoryReader {
public:
    /// `totalPhysicalMemory`, in bytes, is the total of every sample, whatever the counters say.
    MemoryReader(std::uint64_t totalPhysicalMemory, std::unique_ptr<PageCounters> source);

    /// Absent when the counters cannot be read, or their sum exceeds 64 bits.
    std::optional<MemoryInfo> read();

private:
    std::uint64_t m_totalPhysicalMemory;
    std::unique_ptr<PageCounters> m_source;
};
