#pragma once

#include <chrono>
#include <optional>

/// When readings are due: at multiples of the interval from a start on, so that nothing drifts. Not
/// for several threads at a time.
class ReadingTimes {
public:
    using Clock = std::chrono::steady_clock;

    /// The first reading is due at once.
    void restart(Clock::time_point now, Clock::duration interval);

    /// The time of the next reading that nobody has claimed. What was missed is left out.
    Clock::time_point claim(Clock::time_point now);

    /// Whether a claimed reading is still to be taken, which is counted as done then. Not when the
    /// last one was just taken, as after the computer slept through several.
    bool begin(Clock::time_point now);

private:
    Clock::duration m_interval{1};
    Clock::time_point m_next; ///< unclaimed
    std::optional<Clock::time_point> m_last; ///< begun; absent while the first is due
};
