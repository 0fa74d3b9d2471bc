#pragma once

#include "Platform/Linux/Sensors/KernelFile.h"
#include "Platform/ProcessorTicks.h"

#include <string>
#include <string_view>
#include <vector>

/// The tick counters of /proc/stat.
/// https://docs.kernel.org/filesystems/proc.html#miscellaneous-kernel-statistics-in-proc-stat
class LinuxProcessorTicks : public ProcessorTicks {
public:
    explicit LinuxProcessorTicks(std::string path = "/proc/stat");

    bool read(std::vector<ProcessorCore> &cores) override;

    /// The cores of a text in the format of /proc/stat. A core with a damaged or cut off line is
    /// left out. False when no core is left, or when the cores are not in rising order.
    static bool parse(std::string_view text, std::vector<ProcessorCore> &cores);

private:
    KernelFile m_file;
};
