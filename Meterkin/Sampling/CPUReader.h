#pragma once

#include "Platform/ProcessorTicks.h"
#include "Sampling/CPUInfo.h"

#include <memory>
#include <vector>

/// Turns the tick counters of the cores into busy percentages since the previous read. One thread
/// at a time.
class CPUReader {
public:
    explicit CPUReader(std::unique_ptr<ProcessorTicks> source);

    /// Replaces `info`; reuses its storage. False when the counters cannot be read; `info` is
    /// unspecified then, and the next read compares with the last good one. A core without a
    /// previous value is at 0.0.
    bool read(CPUInfo &info);

private:
    const CoreTicks *previousTicksOf(const ProcessorCore &core, std::size_t position) const;

    std::unique_ptr<ProcessorTicks> m_source;
    std::vector<ProcessorCore> m_previousTicks;
    std::vector<ProcessorCore> m_currentTicks;
};
