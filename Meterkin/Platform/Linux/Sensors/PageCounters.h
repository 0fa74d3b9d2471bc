#pragma once

#include "Platform/Linux/Sensors/KernelFile.h"
#include "Platform/Linux/Sensors/MeminfoLines.h"
#include "Platform/PageCounters.h"

#include <deque>
#include <string>

/// The memory of /proc/meminfo and of the compressed swap devices (zram).
class LinuxPageCounters : public PageCounters {
public:
    explicit LinuxPageCounters(std::string path = "/proc/meminfo",
                               std::string blockFolder = "/sys/block");

    std::optional<PageCounts> read() override;
    std::uint64_t physicalMemory() override;

private:
    void findZramDevices();
    /// Memory of the compressed swap devices, in bytes.
    std::uint64_t zramHeld(const MeminfoLines &lines);

    std::string m_blockFolder;
    KernelFile m_file;
    MeminfoParser m_parser;
    std::deque<KernelFile> m_zramDevices;
    std::optional<std::uint64_t> m_swapTotal; ///< kB, when the devices were found
    bool m_hasFoundDevices = false;
};
