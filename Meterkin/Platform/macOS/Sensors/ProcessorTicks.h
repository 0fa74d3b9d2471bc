#pragma once

#include "Platform/ProcessorTicks.h"
#include "Platform/macOS/Sensors/HostPort.h"

/// The tick counters of each core, from `host_processor_info`.
class MacProcessorTicks : public ProcessorTicks {
public:
    /// Aborts the program when a counter is negative, since no counter can be trusted then.
    bool read(std::vector<ProcessorCore> &cores) override;

private:
    HostPort m_host;
};
