#pragma once

#include "Platform/ProcessorTicks.h"
#include "Platform/macOS/HostPort.h"

/// The tick counters that the kernel keeps of each core.
class MachProcessorTicks : public ProcessorTicks {
public:
    /// Ends the program when a counter is negative: none of them can be trusted then.
    bool read(std::vector<ProcessorCore> &cores) override;

private:
    HostPort m_host;
};
