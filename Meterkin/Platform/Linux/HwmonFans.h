#pragma once

#include "Platform/FanControllerConnection.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// The fans of the kernel's hardware monitors, presented as keys of a fan controller. They are
/// numbered once, when opened, in an order that stays the same from boot to boot.
class HwmonFans : public FanControllerConnection {
public:
    explicit HwmonFans(std::string folder = "/sys/class/hwmon");

    bool open() override;
    /// Fails for a fan that is gone or does not give a number, and for what is no key of a fan.
    bool call(const ControllerRecord &request, ControllerRecord &reply) override;
    void close() override;

private:
    struct Fan {
        std::string chipName;
        std::string devicePath; ///< where the chip sits in the machine, without monitor numbers
        std::uint64_t number = 0;
        std::string pathStem; ///< ".../fan1"
    };

    void findFans();
    /// The speed file a key names; absent when it is none of ours.
    std::optional<std::string> pathOf(std::uint32_t key) const;

    std::string m_folder;
    std::vector<Fan> m_fans;
};
