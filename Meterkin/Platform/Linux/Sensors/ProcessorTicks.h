#pragma once

#include "Platform/Linux/Sensors/KernelFile.h"
#include "Platform/ProcessorTicks.h"

#include <string>
#include <string_view>
#include <vector>

/// The tick counters of /proc/stat.
class LinuxProcessorTicks : public ProcessorTicks {
public:
    explicit LinuxProcessorTicks(std::string path = "/proc/stat");

    bool read(std::vector<ProcessorCore> &cores) override;

    /// The cores of a text in the format of /proc/stat. A core whose line is cut off or damaged is
    /// left out; false when none is left or when the lines contradict each other.
    static bool parse(std::string_view text, std::vector<ProcessorCore> &cores);

private:
    KernelFile m_file;
};
