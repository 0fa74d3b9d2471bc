#pragma once

#include "Platform/Clock.h"
#include "Platform/FanSource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The fans of the kernel's hardware monitors, in an order that is the same after each boot.
/// https://docs.kernel.org/hwmon/sysfs-interface.html
class LinuxFanSource : public FanSource {
public:
    explicit LinuxFanSource(
        std::string folder = "/sys/class/hwmon",
        MonotonicClock clock = [] { return std::chrono::steady_clock::now(); });

    /// Fans that were added or removed count from ten seconds later at the latest.
    void read(FanSample &sample) override;

private:
    struct Fan {
        std::string chip;
        std::string device; ///< path of the device, without the number of a monitor
        std::uint64_t number = 0;
        std::string input; ///< paths of its files
        std::string minimum;
        std::string maximum;
        QString name;
        bool operator==(const Fan &) const = default;
    };

    void lookForFans();
    void findFans();
    void addFansOf(const std::string &monitor);
    /// Logs, once per file, that it cannot be read. `error` is an errno, 0 for what is no number.
    void warnOnce(const std::string &path, int error);

    std::string m_folder;
    MonotonicClock m_clock;
    std::optional<std::chrono::steady_clock::time_point> m_lookedAt;
    std::uint64_t m_monitors = 0; ///< their hash at the last look
    bool m_hasChanged = true; ///< at the last look; the first one finds the fans in any case
    std::vector<Fan> m_fans;
    std::vector<std::string> m_reported; ///< paths that the log has named
};
