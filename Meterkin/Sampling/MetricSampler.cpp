#include "Sampling/MetricSampler.h"

namespace {

MemoryReader makeMemoryReader(std::unique_ptr<PageCounters> pages)
{
    const std::uint64_t physicalMemory = pages->physicalMemory();
    return MemoryReader(physicalMemory, std::move(pages));
}

} // namespace

MetricSampler::MetricSampler(std::unique_ptr<FanSource> fans, std::unique_ptr<PageCounters> pages,
                             std::unique_ptr<ProcessorTicks> ticks)
    : m_fans(std::move(fans))
    , m_memoryReader(makeMemoryReader(std::move(pages)))
    , m_cpuReader(std::move(ticks))
{
}

MetricSample MetricSampler::sample()
{
    return {m_fans.latest(), m_memoryReader.read(), m_cpuReader.read()};
}
