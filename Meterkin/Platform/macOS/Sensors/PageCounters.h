#pragma once

#include "Platform/PageCounters.h"
#include "Platform/macOS/Sensors/HostPort.h"

/// The virtual memory statistics of the kernel, from `host_statistics64`.
class MacPageCounters : public PageCounters {
public:
    std::optional<PageCounts> read() override;
    std::uint64_t physicalMemory() override;

private:
    HostPort m_host;
};
