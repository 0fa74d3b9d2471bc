#pragma once

#include "Platform/Clock.h"
#include "Sampling/FanReading.h"
#include "Sampling/SMCReader.h"

#include <QList>

#include <memory>
#include <mutex>
#include <optional>

/// What the fan controller said at one moment.
struct FanSample {
    qint64 count = 0; ///< fans the controller reports, 0 when it cannot be asked
    QList<FanReading> fans; ///< those that answered, in index order
};

/// Reads the fans and keeps what they said last, since a sensor may take its time or hang for ever.
/// Any thread.
class FanSampler {
public:
    /// An answer that takes longer is late: nothing else waits for it.
    static constexpr std::chrono::milliseconds Patience{100};
    /// How long the last speeds stand for an answer that is late: until a slow sensor has given its
    /// next one, but not for ever.
    static constexpr std::chrono::seconds Lifetime{10};

    explicit FanSampler(
        std::unique_ptr<FanControllerConnection> connection,
        MonotonicClock clock = [] { return std::chrono::steady_clock::now(); });

    /// Asks the controller; takes as long as its sensors do. Does nothing while another thread
    /// waits for them.
    void refresh();

    /// Absent before the first answer; without speeds when the next one has been due for too long.
    std::optional<FanSample> latest() const;
    /// Whether the last answer was late.
    bool isSlow() const;

private:
    FanSample read();

    SMCReader m_smcReader;
    MonotonicClock m_clock;

    mutable std::mutex
        m_mutex; ///< guards the rest, and is never held while the controller is asked
    std::optional<FanSample> m_latest;
    std::optional<std::chrono::steady_clock::time_point> m_askedAt; ///< absent when nobody asks
    bool m_isSlow = false;
};
