#pragma once

#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"

#include <chrono>
#include <mutex>
#include <optional>

struct Reading;

/// What somebody sees or hears of the readings without asking.
struct VisibleValues {
    bool areAll = false; ///< as while the dashboard is open
    SystemMetric title = SystemMetric::MemoryUsage;
    ByMetric<Thresholds> thresholds;
    ByMetric<bool> isAlertOn;
    /// For a panel that keeps the tool tip: how often it is told of another one at most. Absent
    /// where the panel asks.
    std::optional<std::chrono::seconds> toolTipPeriod;

    bool operator==(const VisibleValues &) const = default;
};

/// Tells the readings that look or sound different from the one before. The first one does.
class VisibleChanges {
public:
    /// Any thread. After a change the next reading counts as different.
    void follow(const VisibleValues &values);

    /// One thread at a time, in the order of the readings; any number of times for one of them.
    bool areIn(const Reading &reading);

private:
    struct Title {
        std::optional<double> number; ///< rounded as in the text
        ThresholdTier tier = ThresholdTier::Green;
        bool operator==(const Title &) const = default;
    };
    struct Fans {
        qint64 count = 0;
        qsizetype readable = 0;
        bool operator==(const Fans &) const = default;
    };
    struct ToolTip {
        ByMetric<std::optional<double>> numbers; ///< rounded as in the text
        std::chrono::system_clock::time_point time;
    };

    bool hasToolTipChanged(const Reading &reading);
    bool isLimitReached(const Reading &reading);

    std::mutex m_mutex; ///< guards all of it
    VisibleValues m_values;
    bool m_isNew = true; ///< what is watched
    Title m_title;
    std::optional<Fans> m_fans; ///< absent while they are not known
    ByMetric<bool> m_isAbove; ///< the limit of the alert
    ToolTip m_toolTip; ///< as the panel was last told
};
