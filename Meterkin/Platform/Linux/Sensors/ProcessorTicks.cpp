#include "Platform/Linux/Sensors/ProcessorTicks.h"

#include "Platform/Linux/Sensors/NumberText.h"

#include <array>
#include <limits>
#include <optional>

namespace {

constexpr std::string_view LinePrefix = "cpu";

// The columns after the core's number. Guest time, which follows, is already part of user.
enum Column { User, Nice, System, Idle, IOWait, IRQ, SoftIRQ, Steal, ColumnCount };
constexpr int FewestColumns = IOWait; // old kernels have none after the idle time

std::optional<ProcessorCore> parseCore(std::string_view line)
{
    const std::optional<std::uint64_t> number = takeNumber(line);
    if (!number || *number > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;

    std::array<std::uint64_t, ColumnCount> columns{};
    for (int i = 0; i < ColumnCount; ++i) {
        if (i >= FewestColumns && line.find_first_not_of(" \t") == std::string_view::npos)
            break;
        const std::optional<std::uint64_t> ticks = takeNumber(line);
        // Real counters never reach an eighth of the range; below it no sum overflows.
        if (!ticks || *ticks > std::numeric_limits<std::uint64_t>::max() / ColumnCount)
            return std::nullopt;
        columns[static_cast<std::size_t>(i)] = *ticks;
    }

    ProcessorCore core;
    core.number = static_cast<std::uint32_t>(*number);
    core.ticks.user = columns[User];
    core.ticks.system = columns[System] + columns[IRQ] + columns[SoftIRQ] + columns[Steal];
    core.ticks.idle = columns[Idle] + columns[IOWait];
    core.ticks.nice = columns[Nice];
    return core;
}

} // namespace

LinuxProcessorTicks::LinuxProcessorTicks(std::string path)
    : m_file(std::move(path))
{
}

bool LinuxProcessorTicks::read(std::vector<ProcessorCore> &cores)
{
    const std::optional<std::string_view> text = m_file.read();
    const bool isRead = text && parse(*text, cores);
    if (!isRead)
        m_file.warnOnce("there is no reading of the CPU until it can be used");
    return isRead;
}

bool LinuxProcessorTicks::parse(std::string_view text, std::vector<ProcessorCore> &cores)
{
    cores.clear();
    while (std::optional<std::string_view> line = takeLine(text)) {
        if (!line->starts_with(LinePrefix))
            break;
        line->remove_prefix(LinePrefix.size());
        // A line without a number is the sum of all cores.
        const bool isCore = !line->empty() && line->front() >= '0' && line->front() <= '9';
        const std::optional<ProcessorCore> core = isCore ? parseCore(*line) : std::nullopt;
        if (!core)
            continue;
        // The kernel lists the cores in rising order. Of a core that occurs twice either line may
        // be wrong.
        if (!cores.empty() && core->number <= cores.back().number)
            return false;
        cores.push_back(*core);
    }
    return !cores.empty();
}
