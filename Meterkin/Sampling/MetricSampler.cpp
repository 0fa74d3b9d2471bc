#include "Sampling/MetricSampler.h"

namespace {

MemoryReader makeMemoryReader(std::unique_ptr<PageCounters> pages)
{
    const std::uint64_t physicalMemory = pages->physicalMemory();
    return MemoryReader(physicalMemory, std::move(pages));
}

} // namespace

MetricSampler::MetricSampler(MetricSources sources)
    : m_fans(std::move(sources.fans))
    , m_memoryReader(makeMemoryReader(std::move(sources.pages)))
    , m_cpuReader(std::move(sources.ticks))
{
}

MetricSample MetricSampler::sample()
{
    return {m_fans.latest(), m_memoryReader.read(), m_cpuReader.read()};
}
