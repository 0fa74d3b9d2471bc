#pragma once

#include "Sampling/CPUReader.h"
#include "Sampling/FanSampler.h"
#include "Sampling/MemoryReader.h"

/// Everything read from the machine at one moment.
struct MetricSample {
    std::optional<FanSample> fans; ///< absent until the fan controller has answered once
    std::optional<MemoryInfo> memory;
    std::optional<CPUInfo> processors;
};

/// The three readers: the fans, which may take their time, apart from the others.
class MetricSampler {
public:
    MetricSampler(std::unique_ptr<FanControllerConnection> fans,
                  std::unique_ptr<PageCounters> pages, std::unique_ptr<ProcessorTicks> ticks);

    /// Asks the fans, on any thread.
    FanSampler &fans() { return m_fans; }

    /// Asks the others, and adds what the fans said last. One thread at a time.
    MetricSample sample();

private:
    FanSampler m_fans;
    MemoryReader m_memoryReader;
    CPUReader m_cpuReader;
};
