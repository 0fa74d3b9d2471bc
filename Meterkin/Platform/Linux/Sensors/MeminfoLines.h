#pragma once

#include "Platform/PageCounters.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// The lines of /proc/meminfo that matter here, in kB; a line that is missing is absent.
struct MeminfoLines {
    std::optional<std::uint64_t> total;
    std::optional<std::uint64_t> free;
    std::optional<std::uint64_t> available;
    std::optional<std::uint64_t> buffers; ///< only tells a whole file from one cut off
    std::optional<std::uint64_t> swapTotal;
    std::optional<std::uint64_t> zswap; ///< memory held by the compressed cache before swap
    // What the kernel holds for itself and cannot give back. VmallocUsed is none of it: it holds
    // the kernel stacks once more, and on old kernels address space instead of memory.
    std::optional<std::uint64_t> unreclaimableSlab;
    std::optional<std::uint64_t> kernelStack;
    std::optional<std::uint64_t> pageTables;
    std::optional<std::uint64_t> secondaryPageTables;
    std::optional<std::uint64_t> perProcessor;

    /// Absent when a line of these is damaged or comes twice: such a text is not to be trusted.
    static std::optional<MeminfoLines> parse(std::string_view text);

    /// The counts in pages of 1 kB, so that every sum is exact: active + wired + compressed is
    /// total less available. `zramHeld` is what compressed swap devices hold, in bytes. Absent when
    /// a line that this needs is missing, or free exceeds total.
    std::optional<PageCounts> pageCounts(std::uint64_t zramHeld) const;
};
