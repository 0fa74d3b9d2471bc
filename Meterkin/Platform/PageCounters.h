#pragma once

#include <cstdint>
#include <optional>

/// A snapshot of the kernel's page counters; all but the size are numbers of pages.
struct PageCounts {
    std::uint64_t pageSize = 0; ///< bytes
    std::uint64_t active = 0;
    std::uint64_t wired = 0;
    std::uint64_t compressed = 0; ///< pages that the memory compressor occupies
    std::uint64_t inactive = 0;
    std::uint64_t free = 0;
};

/// The kernel's memory statistics. Called from one thread at a time, off the main thread.
class PageCounters {
public:
    virtual ~PageCounters() = default;

    /// The counters now; absent when they cannot be read or contradict each other.
    virtual std::optional<PageCounts> read() = 0;

    /// The machine's physical memory in bytes; 0 when it is unknown.
    virtual std::uint64_t physicalMemory() = 0;
};
