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

void MetricSampler::read(MetricSample &sample)
{
    sample.memory = m_memoryReader.read();
    if (!sample.processors)
        sample.processors.emplace();
    if (!m_cpuReader.read(*sample.processors))
        sample.processors.reset();
}
