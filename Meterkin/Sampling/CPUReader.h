#pragma once

#include "Platform/ProcessorTicks.h"
#include "Sampling/CPUInfo.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

/// Turns the cumulative tick counters of the cores into busy percentages since the read before.
/// One thread at a time.
class CPUReader {
public:
    explicit CPUReader(std::unique_ptr<ProcessorTicks> source);

    /// Absent when the kernel cannot be asked; the next read then compares with the last good one.
    /// A core that was not there at the read before is at 0.0. Nothing is allocated while the
    /// number of cores stays and nobody keeps a sample for longer than until the next one.
    std::optional<CPUInfo> read();

private:
    const CoreTicks *previousTicksOf(const ProcessorCore &core, std::size_t position) const;

    std::unique_ptr<ProcessorTicks> m_source;
    std::vector<ProcessorCore> m_previousTicks;
    std::vector<ProcessorCore> m_currentTicks;
    // Two in turn: listeners still share the list of the newest sample when the next is taken.
    std::array<QList<double>, 2> m_usages;
    std::size_t m_turn = 0;
};
