#pragma once

#include "Platform/Clock.h"
#include "Platform/FanControllerConnection.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The fans of the kernel's hardware monitors, presented as keys of a fan controller, in an order
/// that stays the same from boot to boot. Monitors come and go: when their number is asked for, the
/// fans are looked for again if the last look was some seconds ago and the monitors have changed.
class HwmonFans : public FanControllerConnection {
public:
    explicit HwmonFans(
        std::string folder = "/sys/class/hwmon",
        MonotonicClock clock = [] { return std::chrono::steady_clock::now(); });

    /// Touches nothing: a monitor may hang, and the first may come later.
    bool open() override;
    /// Fails for a fan that is gone or does not give a number, and for what is no key of a fan.
    bool call(const ControllerRecord &request, ControllerRecord &reply) override;
    void close() override;
    bool hasOwnTypes() const override { return true; }

private:
    /// A monitor by what tells whether it has been replaced, or has got or lost a file.
    struct Monitor {
        std::string path;
        std::uint64_t inode = 0;
        std::int64_t changedAt = 0; ///< nanoseconds
        bool operator==(const Monitor &) const = default;
    };
    struct Fan {
        std::string chipName;
        std::string devicePath; ///< where the chip sits in the machine, without monitor numbers
        std::uint64_t number = 0;
        std::string pathStem; ///< ".../fan1"
    };

    void lookForFans();
    std::vector<Monitor> listMonitors() const;
    void findFans();
    /// The speed file a key names; absent when it is none of ours.
    std::optional<std::string> pathOf(std::uint32_t key) const;

    std::string m_folder;
    MonotonicClock m_clock;
    std::optional<std::chrono::steady_clock::time_point> m_lookedAt;
    std::vector<Monitor> m_monitors; ///< by path
    bool m_hasChanged = false; ///< at the last look
    std::vector<Fan> m_fans;
};
