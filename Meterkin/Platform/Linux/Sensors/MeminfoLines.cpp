#include "Platform/Linux/Sensors/MeminfoLines.h"

#include "Platform/Linux/Sensors/NumberText.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::uint64_t BytesPerKilobyte = 1024;

struct Line {
    std::string_view name; ///< with the colon
    std::optional<std::uint64_t> MeminfoLines::*value;
};
constexpr std::array KnownLines{
    Line{"MemTotal:", &MeminfoLines::total},
    Line{"MemFree:", &MeminfoLines::free},
    Line{"MemAvailable:", &MeminfoLines::available},
    Line{"Buffers:", &MeminfoLines::buffers},
    Line{"SwapTotal:", &MeminfoLines::swapTotal},
    Line{"Zswap:", &MeminfoLines::zswap},
    Line{"SUnreclaim:", &MeminfoLines::unreclaimableSlab},
    Line{"KernelStack:", &MeminfoLines::kernelStack},
    Line{"PageTables:", &MeminfoLines::pageTables},
    Line{"SecPageTables:", &MeminfoLines::secondaryPageTables},
    Line{"Percpu:", &MeminfoLines::perProcessor},
};

/// The number that the text begins with, up to the end of its line.
std::optional<std::uint64_t> kilobytes(std::string_view text)
{
    const std::optional<std::uint64_t> number = takeNumber(text);
    // Below this limit no sum of these lines, in bytes, exceeds 64 bits.
    if (!number || !text.starts_with(" kB\n")
        || *number > std::numeric_limits<std::uint64_t>::max() / BytesPerKilobyte / 8)
        return std::nullopt;
    return number;
}

} // namespace

std::optional<MeminfoLines> MeminfoParser::parse(std::string_view text)
{
    if (std::optional<MeminfoLines> lines = parseInPlace(text))
        return lines;
    std::optional<MeminfoLines> lines = search(text);
    m_size = lines && lines->pageCounts(0) ? text.size() : 0;
    return lines;
}

std::optional<MeminfoLines> MeminfoParser::parseInPlace(std::string_view text) const
{
    static_assert(KnownLines.size() == LineCount);
    if (text.size() != m_size)
        return std::nullopt;
    MeminfoLines lines;
    for (std::size_t i = 0; i < LineCount; ++i) {
        const auto &[place, number] = m_places[i];
        if (place == Missing)
            continue;
        const auto &[name, value] = KnownLines[i];
        const bool isThere = (place == 0 || text[place - 1] == '\n')
            && text.substr(place).starts_with(name) && text[number - 1] == ' ';
        if (!isThere || !(lines.*value = kilobytes(text.substr(number))))
            return std::nullopt;
    }
    return lines;
}

std::optional<MeminfoLines> MeminfoParser::search(std::string_view text)
{
    MeminfoLines lines;
    m_places.fill({});
    std::size_t place = 0;
    for (std::string_view rest = text; const std::optional<std::string_view> line = takeLine(rest);
         place = text.size() - rest.size()) {
        const std::string_view name = line->substr(0, line->find(':') + 1);
        const auto *const known = std::ranges::find(KnownLines, name, &Line::name);
        if (known == KnownLines.end())
            continue;
        Place &placed = m_places[static_cast<std::size_t>(known - KnownLines.begin())];
        if (placed.line != Missing)
            return std::nullopt;
        placed = {place, text.find_first_not_of(' ', place + name.size())};
        lines.*known->value = kilobytes(text.substr(place + name.size()));
        if (!(lines.*known->value))
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
