#pragma once

#include "Sampling/CPUReader.h"
#include "Sampling/FanSampler.h"
#include "Sampling/MemoryReader.h"

/// Everything read from the machine at one moment.
struct MetricSample {
    std::optional<FanSample> fans; ///< absent until they have been read once
    std::optional<MemoryInfo> memory;
    std::optional<CPUInfo> processors;
};

/// The three readers. The fans, which may be slow, are read apart from the others.
class MetricSampler {
public:
    MetricSampler(std::unique_ptr<FanSource> fans, std::unique_ptr<PageCounters> pages,
                  std::unique_ptr<ProcessorTicks> ticks);

    /// Any thread.
    FanSampler &fans() { return m_fans; }

    /// Reads memory and CPU, and adds the last sample of the fans. One thread at a time.
    MetricSample sample();

private:
    FanSampler m_fans;
    MemoryReader m_memoryReader;
    CPUReader m_cpuReader;
};
