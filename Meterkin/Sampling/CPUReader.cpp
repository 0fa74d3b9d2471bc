#include "Sampling/CPUReader.h"

#include <algorithm>

namespace {

// On Linux the time spent waiting for I/O can decrease, see proc(5): that counts as no advance.
double advance(std::uint64_t previous, std::uint64_t current)
{
    return current > previous ? static_cast<double>(current - previous) : 0.0;
}

double usageBetween(const CoreTicks &previous, const CoreTicks &current)
{
    const double busy = advance(previous.user, current.user)
        + advance(previous.system, current.system) + advance(previous.nice, current.nice);
    const double total = busy + advance(previous.idle, current.idle);
    return total > 0.0 ? busy / total * 100.0 : 0.0;
}

} // namespace

CPUReader::CPUReader(std::unique_ptr<ProcessorTicks> source)
    : m_source(std::move(source))
{
}

bool CPUReader::read(CPUInfo &info)
{
    if (!m_source->read(m_currentTicks))
        return false;

    info.perCoreUsage.clear(); // keeps the storage unless it is shared
    info.perCoreUsage.reserve(static_cast<qsizetype>(m_currentTicks.size()));
    double sum = 0.0;
    for (std::size_t i = 0; i < m_currentTicks.size(); ++i) {
        const CoreTicks *previous = previousTicksOf(m_currentTicks[i], i);
        const double usage = previous ? usageBetween(*previous, m_currentTicks[i].ticks) : 0.0;
        info.perCoreUsage.append(usage);
        sum += usage;
    }
    m_previousTicks.swap(m_currentTicks);
    info.aggregateUsage =
        m_previousTicks.empty() ? 0.0 : sum / static_cast<double>(m_previousTicks.size());
    return true;
}

const CoreTicks *CPUReader::previousTicksOf(const ProcessorCore &core, std::size_t position) const
{
    // Nearly always at the same position, unless a core before it went online or offline.
    if (position < m_previousTicks.size() && m_previousTicks[position].number == core.number)
        return &m_previousTicks[position].ticks;
    const auto found =
        std::find_if(m_previousTicks.begin(), m_previousTicks.end(),
                     [&core](const ProcessorCore &other) { return other.number == core.number; });
    return found == m_previousTicks.end() ? nullptr : &found->ticks;
}
