#include "Platform/Linux/Updates/Schedule.h"

#include <QDateTime>

namespace {

const QString lastCheckKey = QStringLiteral("updateLastCheck"); // seconds since 1970
constexpr qint64 DaySeconds = 24 * 60 * 60;

// Not a day: a timer stands still while the machine sleeps.
constexpr std::chrono::hours Interval{1};

} // namespace

UpdateSchedule::UpdateSchedule(DefaultsStore &store, QObject *parent)
    : QObject(parent)
    , m_store(store)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, &UpdateSchedule::tellIfDue);
}

void UpdateSchedule::start(std::chrono::milliseconds firstCheck)
{
    m_timer.start(firstCheck);
}

void UpdateSchedule::stop()
{
    m_timer.stop();
}

void UpdateSchedule::noteCheck()
{
    m_store.setInteger(lastCheckKey, QDateTime::currentSecsSinceEpoch());
}

void UpdateSchedule::tellIfDue()
{
    m_timer.start(Interval);
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    const qint64 last = m_store.integer(lastCheckKey);
    // A last time in the future comes from a wrong clock.
    if (last > now || last <= now - DaySeconds)
        emit due();
}
