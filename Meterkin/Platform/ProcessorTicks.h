#pragma once

#include <cstdint>
#include <vector>

/// Cumulative tick counters of one logical core since boot, in the kernel's ticks.
struct CoreTicks {
    std::uint64_t user = 0;
    std::uint64_t system = 0;
    std::uint64_t idle = 0;
    std::uint64_t nice = 0;
};

/// A core that is online.
struct ProcessorCore {
    std::uint32_t number = 0; ///< as the kernel counts; a core that is offline leaves a gap
    CoreTicks ticks;
};

/// The kernel's per-core tick counters. Called from one thread at a time, off the main thread.
class ProcessorTicks {
public:
    virtual ~ProcessorTicks() = default;

    /// Replaces `cores` by the cores that are online, in the kernel's order; reuses its storage.
    /// False when they cannot be read; `cores` is unspecified then.
    virtual bool read(std::vector<ProcessorCore> &cores) = 0;
};
