#include "Platform/Linux/Bus/RepeatedCall.h"

#include <algorithm>

namespace {

using namespace std::chrono_literals;

constexpr auto FirstRetry = 1s;
constexpr auto LongestRetry = 1min;
constexpr std::chrono::milliseconds Pause = 100ms; // between two calls of a burst

} // namespace

RepeatedCall::RepeatedCall(BusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_retry(FirstRetry, LongestRetry)
{
    connect(&m_retry, &QTimer::timeout, this, &RepeatedCall::attempt);
    connect(&bus, &BusConnection::disconnected, this, &RepeatedCall::cancel);
}

void RepeatedCall::cancel()
{
    m_pending.reset();
    m_retry.stop();
}

void RepeatedCall::begin()
{
    m_retry.reset();
    if (m_pending)
        m_isSentAgain = true;
    else if (m_retry.isActive())
        m_retry.start(std::min(m_retry.remainingTimeAsDuration(), Pause));
    else
        attempt();
}

void RepeatedCall::attempt()
{
    m_isSentAgain = false;
    m_attempt();
}

void RepeatedCall::endAttempt(bool isRepeated)
{
    m_pending.reset();
    if (m_isSentAgain)
        m_retry.start(Pause);
    else if (isRepeated)
        m_retry.retry();
}
