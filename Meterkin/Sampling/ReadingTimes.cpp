#include "Sampling/ReadingTimes.h"

#include <utility>

void ReadingTimes::restart(Clock::time_point now, Clock::duration interval)
{
    m_interval = interval;
    m_next = now + interval;
    m_last.reset();
}

ReadingTimes::Clock::time_point ReadingTimes::claim(Clock::time_point now)
{
    if (!m_last)
        return now;
    if (m_next <= now)
        m_next += ((now - m_next) / m_interval + 1) * m_interval;
    return std::exchange(m_next, m_next + m_interval);
}

bool ReadingTimes::begin(Clock::time_point now)
{
    if (m_last && now - *m_last < m_interval / 2)
        return false;
    m_last = now;
    return true;
}
