#pragma once

#include <cstdint>

/// One memory sample, in bytes.
struct MemoryInfo {
    std::uint64_t activeBytes = 0;
    std::uint64_t wiredBytes = 0;
    std::uint64_t compressedBytes = 0;
    std::uint64_t inactiveBytes = 0;
    std::uint64_t freeBytes = 0;
    std::uint64_t totalBytes = 0; ///< physical memory; the other fields need not add up to it

    bool operator==(const MemoryInfo &) const = default;

    std::uint64_t usedBytes() const { return activeBytes + wiredBytes + compressedBytes; }
    /// Used share of the total in percent; 0 when the total is 0.
    double usagePercent() const
    {
        return totalBytes == 0
            ? 0.0
            : static_cast<double>(usedBytes()) / static_cast<double>(totalBytes) * 100.0;
    }
};
