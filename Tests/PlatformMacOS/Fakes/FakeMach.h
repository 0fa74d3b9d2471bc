#pragma once

#include <mach/mach.h>

#include <vector>

/// What the kernel answers, and what of its own it has lent to the task.
struct FakeMach {
    kern_return_t status = KERN_SUCCESS;
    natural_t coreCount = 0;
    std::vector<integer_t> ticks;
    bool givesArray = true;
    std::vector<integer_t> pageWords; ///< of vm_statistics64, as many as this kernel knows
    int hostReferences = 0;

    static FakeMach &kernel();
};
