#pragma once

#include <QTimer>

#include <chrono>

/// Runs out once, for another attempt at what has failed: each time twice as late as the time
/// before, up to a longest delay.
class RetryTimer : public QTimer {
public:
    RetryTimer(std::chrono::milliseconds first, std::chrono::milliseconds longest);

    void retry();
    /// After a success: the next delay is the first one again.
    void reset() { m_next = m_first; }

private:
    std::chrono::milliseconds m_first;
    std::chrono::milliseconds m_longest;
    std::chrono::milliseconds m_next;
};
