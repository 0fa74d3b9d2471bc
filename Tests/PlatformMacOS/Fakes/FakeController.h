#pragma once

#include <mach/mach.h>

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

/// The driver of the fan controller, which knows its records by their bytes alone.
struct FakeController {
    struct Key {
        std::string type;
        std::uint32_t size = 0;
        std::array<std::uint8_t, 4> bytes{};
    };

    bool hasDictionary = true;
    bool hasService = true;
    kern_return_t openStatus = KERN_SUCCESS;
    int refusedCommand = 0; ///< scribbles over the reply before it refuses
    std::map<std::string, Key> keys;

    static FakeController &driver();
    /// Held by its calls, and by who changes it while a program samples.
    inline static std::mutex mutex;
};
