#pragma once

#include <QTimer>

#include <chrono>

/// A single-shot timer for retries: each delay is twice the one before, up to a longest one.
class RetryTimer : public QTimer {
public:
    RetryTimer(std::chrono::milliseconds first, std::chrono::milliseconds longest);

    /// Starts it after a failure.
    void retry();
    /// After a success: the next delay is the first one again.
    void reset() { m_next = m_first; }

private:
    std::chrono::milliseconds m_first;
    std::chrono::milliseconds m_longest;
    std::chrono::milliseconds m_next;
};
