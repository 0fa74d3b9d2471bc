#pragma once

#include "Platform/PageCounters.h"
#include "Platform/macOS/HostPort.h"

/// The page counters of the kernel's virtual memory.
class MachPageCounters : public PageCounters {
public:
    std::optional<PageCounts> read() override;
    std::uint64_t physicalMemory() override;

private:
    HostPort m_host;
};
