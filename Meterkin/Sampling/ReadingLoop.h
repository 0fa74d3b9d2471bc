#pragma once

#include "Platform/Clock.h"
#include "Sampling/MetricSampler.h"
#include "Sampling/ReadingBatch.h"
#include "Sampling/ReadingTimes.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

/// Takes the readings and keeps them until one of them matters, or there are many. Two threads take
/// turns, each asleep until the reading after the other's: where a sensor holds one of them up, the
/// other goes on alone, and as long as none does, a reading wakes one thread once. Any thread.
class ReadingLoop {
public:
    static constexpr std::size_t MostKept = 10;
    /// Whether somebody is to know of this reading at once. Asked in the order of the readings, up
    /// to twice for each.
    using Filter = std::function<bool(const Reading &)>;

    /// `deliver` is called in the background, and is to let somebody call take(), soon.
    ReadingLoop(MetricSources sources, WallClock clock, std::function<void()> deliver);

    /// The life of each of the two threads.
    void run();

    /// A reading is taken at once, and is to be known at once; then one at each interval.
    void start(ReadingTimes::Clock::duration interval);
    /// Without a filter every reading matters.
    void setFilter(Filter filter);
    /// Replaces the batch by the readings since the last call; reuses its storage.
    void take(ReadingBatch &batch);
    /// No filter is asked and nothing delivered any more. Whether the threads end at once; one that
    /// a sensor holds up does not.
    bool end();

private:
    using Clock = ReadingTimes::Clock;
    using Lock = std::unique_lock<std::mutex>;

    bool sleepUntil(Lock &lock, Clock::time_point due);
    void takeReading();
    void readFans(Lock &lock);
    void close();
    void judge();

    MetricSampler m_sampler;
    WallClock m_clock;

    std::mutex m_turn; ///< held while memory and CPU are read; locked before the other
    std::unique_ptr<Reading> m_read = std::make_unique<Reading>(); ///< guarded by it

    std::mutex m_mutex; ///< guards what follows; never held while a sensor is read
    std::condition_variable m_change; ///< of what a sleeping thread has to know
    std::function<void()> m_deliver;
    Filter m_filter;
    ReadingTimes m_times;
    int m_startCount = 0;
    bool m_isEnded = false;
    int m_runningCount = 0; ///< of the threads
    ReadingBatch m_kept;
    bool m_isDelivered = false; ///< `deliver` was called, and nobody has taken the readings yet
    bool m_isAwaited = false; ///< the next reading that begins matters in any case

    /// The last reading, while its fans are being read.
    std::unique_ptr<Reading> m_open = std::make_unique<Reading>();
    std::optional<int> m_openNumber; ///< absent when there is none
    int m_number = 0; ///< of the last reading
    std::optional<Clock::time_point> m_openUntil; ///< it does not wait for longer, since it matters
    bool m_matters = false;
};
