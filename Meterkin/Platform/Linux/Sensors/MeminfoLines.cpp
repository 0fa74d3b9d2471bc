#include "Platform/Linux/Sensors/MeminfoLines.h"

#include "Platform/Linux/Sensors/NumberText.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr std::uint64_t BytesPerKilobyte = 1024;

using Line = std::pair<std::string_view, std::optional<std::uint64_t> MeminfoLines::*>;
constexpr Line KnownLines[] = {
    {"MemTotal", &MeminfoLines::total},
    {"MemFree", &MeminfoLines::free},
    {"MemAvailable", &MeminfoLines::available},
    {"Buffers", &MeminfoLines::buffers},
    {"SwapTotal", &MeminfoLines::swapTotal},
    {"Zswap", &MeminfoLines::zswap},
    {"SUnreclaim", &MeminfoLines::unreclaimableSlab},
    {"KernelStack", &MeminfoLines::kernelStack},
    {"PageTables", &MeminfoLines::pageTables},
    {"SecPageTables", &MeminfoLines::secondaryPageTables},
    {"Percpu", &MeminfoLines::perProcessor},
};

std::optional<std::uint64_t> kilobytes(std::string_view text)
{
    const std::optional<std::uint64_t> number = takeNumber(text);
    // Below this limit no sum of these lines, in bytes, exceeds 64 bits.
    if (!number || text != " kB"
        || *number > std::numeric_limits<std::uint64_t>::max() / BytesPerKilobyte / 8)
        return std::nullopt;
    return number;
}

} // namespace

std::optional<MeminfoLines> MeminfoLines::parse(std::string_view text)
{
    MeminfoLines lines;
    while (const std::optional<std::string_view> line = takeLine(text)) {
        const std::size_t colon = line->find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view name = line->substr(0, colon);
        const auto *const known = std::ranges::find(KnownLines, name, &Line::first);
        if (known == std::end(KnownLines))
            continue;
        std::optional<std::uint64_t> &value = lines.*known->second;
        if (value)
            return std::nullopt;
        value = kilobytes(line->substr(colon + 1));
        if (!value)
            return std::nullopt;
    }
    return lines;
}

std::optional<PageCounts> MeminfoLines::pageCounts(std::uint64_t zramHeld) const
{
    if (!total || !free || *total == 0 || *free > *total)
        return std::nullopt;
    // An old kernel has no MemAvailable, but the next line, Buffers, is in every version of the
    // file: without both the text was cut off.
    if (!available && !buffers)
        return std::nullopt;

    // Like free(1): an old kernel does not say what is available, and in a container the value may
    // be the host's.
    const std::uint64_t usable = available && *available <= *total ? *available : *free;
    const std::uint64_t used = *total - usable;
    const std::uint64_t kernelHeld = unreclaimableSlab.value_or(0) + kernelStack.value_or(0)
        + pageTables.value_or(0) + secondaryPageTables.value_or(0) + perProcessor.value_or(0);

    PageCounts counts;
    counts.pageSize = BytesPerKilobyte;
    counts.wired = std::min(kernelHeld, used);
    counts.compressed =
        std::min(zswap.value_or(0) + zramHeld / BytesPerKilobyte, used - counts.wired);
    counts.active = used - counts.wired - counts.compressed;
    counts.inactive = usable > *free ? usable - *free : 0;
    counts.free = *free;
    return counts;
}
