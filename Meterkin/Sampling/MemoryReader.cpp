#include "Sampling/MemoryReader.h"

#include <algorithm>
#include <limits>

MemoryReader::MemoryReader(std::uint64_t totalPhysicalMemory, std::unique_ptr<PageCounters> source)
    : m_totalPhysicalMemory(totalPhysicalMemory)
    , m_source(std::move(source))
{
}

std::optional<MemoryInfo> MemoryReader::read()
{
    const std::optional<PageCounts> counts = m_source->read();
    if (!counts || counts->pageSize == 0)
        return std::nullopt;

    // Neither a product nor the sum of all five may overflow.
    const std::uint64_t limit = std::numeric_limits<std::uint64_t>::max() / counts->pageSize / 5;
    if (std::max(
            {counts->active, counts->wired, counts->compressed, counts->inactive, counts->free})
        > limit)
        return std::nullopt;

    const std::uint64_t pageSize = counts->pageSize;
    return MemoryInfo{counts->active * pageSize,     counts->wired * pageSize,
                      counts->compressed * pageSize, counts->inactive * pageSize,
                      counts->free * pageSize,       m_totalPhysicalMemory};
}
