#pragma once

#include "Platform/Clock.h"
#include "Platform/FanSource.h"

#include <memory>
#include <mutex>
#include <optional>

/// Reads the fans and keeps the last sample, because a sensor may be slow or hang forever. Any
/// thread.
class FanSampler {
public:
    /// After a read that took longer, memory and CPU no longer wait for the next one.
    static constexpr std::chrono::milliseconds SlowAfter{100};
    /// A read that takes longer hangs: until then the last speeds are kept.
    static constexpr std::chrono::seconds HungAfter{10};

    explicit FanSampler(
        std::unique_ptr<FanSource> source,
        MonotonicClock clock = [] { return std::chrono::steady_clock::now(); });

    /// Reads the fans, which may take long. Does nothing while another thread does so.
    void refresh();

    /// Replaces `sample` by the last one, without speeds while a read hangs; absent before the
    /// first one. Reuses its storage.
    void copyLatest(std::optional<FanSample> &sample);

    /// How long the next read may take.
    enum class Pace {
        Quick, ///< there are no fans
        Open, ///< not long, if the fans are as they were; not known before the first read
        Slow, ///< long: so did the last one, or one hangs
    };
    Pace pace() const;

private:
    std::unique_ptr<FanSource> m_source;
    MonotonicClock m_clock;
    FanSample m_reading; ///< belongs to the thread that reads

    mutable std::mutex m_mutex; ///< guards what follows; never locked during a read
    std::optional<FanSample> m_latest;
    std::optional<std::chrono::steady_clock::time_point> m_readSince; ///< absent between reads
    bool m_isSlow = false;
    bool m_isHungReported = false; ///< in the log
};
