#pragma once

#include "Platform/PageCounters.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// The lines of /proc/meminfo that matter here, in kB; a missing line is absent.
/// https://docs.kernel.org/filesystems/proc.html#meminfo
struct MeminfoLines {
    std::optional<std::uint64_t> total;
    std::optional<std::uint64_t> free;
    std::optional<std::uint64_t> available;
    std::optional<std::uint64_t> buffers; ///< only to recognise a text that was cut off
    std::optional<std::uint64_t> swapTotal;
    std::optional<std::uint64_t> zswap; ///< memory of the compressed cache in front of swap
    // What the kernel uses itself and cannot reclaim. VmallocUsed is left out: it counts the kernel
    // stacks again, and on old kernels address space instead of memory.
    std::optional<std::uint64_t> unreclaimableSlab;
    std::optional<std::uint64_t> kernelStack;
    std::optional<std::uint64_t> pageTables;
    std::optional<std::uint64_t> secondaryPageTables;
    std::optional<std::uint64_t> perProcessor;

    /// The counts in pages of 1 kB, so that sums are exact: active + wired + compressed is total
    /// minus available. `zramHeld` is the memory of the compressed swap devices, in bytes. Absent
    /// when a necessary line is missing, or free exceeds total.
    std::optional<PageCounts> pageCounts(std::uint64_t zramHeld) const;
};

/// Finds these lines in one text after the other. They are first looked for where they were the
/// last time: numbers have a fixed width, so that a line hardly ever moves.
class MeminfoParser {
public:
    /// Absent when one of the lines is damaged or occurs twice: the rest may be wrong too.
    std::optional<MeminfoLines> parse(std::string_view text);

private:
    static constexpr std::size_t LineCount = 11;
    static constexpr std::size_t Missing = std::string_view::npos;

    std::optional<MeminfoLines> parseInPlace(std::string_view text) const;
    std::optional<MeminfoLines> search(std::string_view text);

    struct Place {
        std::size_t line = Missing;
        std::size_t number = 0; ///< where its digits begin
    };
    std::array<Place, LineCount> m_places;
    std::size_t m_size = 0; ///< of the text with these places; 0 when it made no sense
};
