#pragma once

#include "Platform/ProcessorTicks.h"
#include "Sampling/CPUInfo.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

/// Turns the tick counters of the cores into busy percentages since the previous read. One thread
/// at a time.
class CPUReader {
public:
    explicit CPUReader(std::unique_ptr<ProcessorTicks> source);

    /// Absent when the counters cannot be read; the next read then compares with the last good one.
    /// A core without a previous value is at 0.0. Allocates nothing while the number of cores stays
    /// the same and no sample is kept for longer than until the next one.
    std::optional<CPUInfo> read();

private:
    const CoreTicks *previousTicksOf(const ProcessorCore &core, std::size_t position) const;

    std::unique_ptr<ProcessorTicks> m_source;
    std::vector<ProcessorCore> m_previousTicks;
    std::vector<ProcessorCore> m_currentTicks;
    // Used in turn, because the observers still share the list of the previous sample.
    std::array<QList<double>, 2> m_usages;
    std::size_t m_turn = 0;
};
