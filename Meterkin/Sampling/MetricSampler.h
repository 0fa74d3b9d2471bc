#pragma once

#include "Sampling/CPUReader.h"
#include "Sampling/FanReading.h"
#include "Sampling/MemoryReader.h"
#include "Sampling/SMCReader.h"

/// Everything read from the machine at one moment.
struct MetricSample {
    qint64 fanCount = 0; ///< fans the controller reports, 0 when it cannot be asked
    QList<FanReading> fans; ///< those that answered, in index order
    std::optional<MemoryInfo> memory;
    std::optional<CPUInfo> processors;
};

/// The three readers and the order they are asked in. One thread at a time.
class MetricSampler {
public:
    MetricSampler(std::unique_ptr<FanControllerConnection> fans,
                  std::unique_ptr<PageCounters> pages, std::unique_ptr<ProcessorTicks> ticks);

    /// Asks the hardware; takes as long as its sensors do.
    MetricSample sample();

private:
    QList<FanReading> readFans(qint64 count);

    SMCReader m_smcReader;
    MemoryReader m_memoryReader;
    CPUReader m_cpuReader;
};
