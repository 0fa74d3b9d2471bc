#pragma once

#include "Platform/Linux/Sensors/KernelFile.h"
#include "Platform/PageCounters.h"

#include <deque>
#include <string>

/// The page counters of /proc/meminfo and of the compressed swap devices.
class LinuxPageCounters : public PageCounters {
public:
    explicit LinuxPageCounters(std::string path = "/proc/meminfo",
                         std::string blockFolder = "/sys/block");

    std::optional<PageCounts> read() override;
    std::uint64_t physicalMemory() override;

private:
    void findZramDevices();
    std::uint64_t zramHeld();

    std::string m_blockFolder;
    KernelFile m_file;
    std::deque<KernelFile> m_zramDevices;
    std::optional<std::uint64_t> m_swapTotal; ///< kB, when the devices were looked for
    bool m_hasSoughtDevices = false;
};
