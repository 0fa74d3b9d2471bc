#include "Platform/Linux/Bus/RetryTimer.h"

#include <algorithm>

RetryTimer::RetryTimer(std::chrono::milliseconds first, std::chrono::milliseconds longest)
    : m_first(first)
    , m_longest(longest)
    , m_next(first)
{
    setSingleShot(true);
}

void RetryTimer::retry()
{
    start(m_next);
    m_next = std::min(2 * m_next, m_longest);
}
