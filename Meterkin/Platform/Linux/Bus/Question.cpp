#include "Platform/Linux/Bus/Question.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::chrono::seconds FirstRetry{1};
constexpr std::chrono::minutes LongestRetry{1};

// Between two questions of a burst.
constexpr std::chrono::milliseconds Pause{100};

} // namespace

BusQuestion::BusQuestion(BusConnection &bus, Handler handler, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_handler(std::move(handler))
    , m_retry(FirstRetry, LongestRetry)
{
    connect(&m_retry, &QTimer::timeout, this, &BusQuestion::send);
    connect(&bus, &BusConnection::disconnected, this, &BusQuestion::cancel);
}

void BusQuestion::ask(const QDBusMessage &call)
{
    m_call = call;
    m_retry.reset();
    if (m_pending)
        m_isAskedAgain = true;
    else if (m_retry.isActive())
        m_retry.start(std::min(m_retry.remainingTimeAsDuration(), Pause));
    else
        send();
}

void BusQuestion::cancel()
{
    m_pending.reset();
    m_retry.stop();
}

void BusQuestion::send()
{
    m_isAskedAgain = false;
    m_pending = std::make_unique<QObject>();
    m_bus.call(m_call, m_pending.get(), [this](const QDBusMessage &reply) {
        m_pending.reset();
        if (m_isAskedAgain)
            m_retry.start(Pause);
        if (!m_handler(reply) && !m_retry.isActive())
            m_retry.retry();
    });
}
