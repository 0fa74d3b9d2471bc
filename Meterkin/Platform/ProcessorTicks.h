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

/// One core that is online, with the number the kernel gives it. Numbers may have gaps.
struct ProcessorCore {
    std::uint32_t number = 0;
    CoreTicks ticks;
};

/// The kernel's per-core tick counters. Called from one thread at a time, off the main thread.
class ProcessorTicks {
public:
    virtual ~ProcessorTicks() = default;

    /// Replaces `cores` by the cores online now, in the kernel's order; reuses its storage.
    /// False when the kernel cannot be asked; `cores` is unspecified then.
    virtual bool read(std::vector<ProcessorCore> &cores) = 0;
};
