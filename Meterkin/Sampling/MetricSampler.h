#pragma once

#include "Platform/MetricSources.h"
#include "Sampling/CPUReader.h"
#include "Sampling/FanSampler.h"
#include "Sampling/MemoryReader.h"
#include "Sampling/MetricSample.h"

/// The three readers. The fans, which may be slow, are read apart from the others.
class MetricSampler {
public:
    explicit MetricSampler(MetricSources sources);

    /// Any thread.
    FanSampler &fans() { return m_fans; }

    /// Reads memory and CPU, and leaves the fans as they are. Reuses the storage of `sample`. One
    /// thread at a time.
    void read(MetricSample &sample);

private:
    FanSampler m_fans;
    MemoryReader m_memoryReader;
    CPUReader m_cpuReader;
};
