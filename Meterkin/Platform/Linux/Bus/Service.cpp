#include "Platform/Linux/Bus/Service.h"

#include <utility>

namespace {

// What is started at login may have to wait for a desktop that is still busy.
constexpr int StartMilliseconds = 60'000;

} // namespace

BusService::BusService(BusConnection &bus, const QString &name, QObject *parent)
    : BusName(bus, name, parent)
    , m_question(bus, [this](const QDBusMessage &reply) {
        if (BusConnection::isTimeout(reply))
            return false;
        // An error has a text where the list would be, which is none of its names.
        m_isActivatable = reply.arguments().value(0).toStringList().contains(this->name());
        emit changed();
        return true;
    })
{
    connect(this, &BusName::changed, this, &BusService::tellAvailable);
    connect(&bus, &BusConnection::connected, this, &BusService::follow);
    connect(&bus, &BusConnection::disconnected, this, [this] { m_isActivatable.reset(); });
    if (bus.connection())
        follow();
}

bool BusService::isAvailable() const
{
    return owner() && (!owner()->isEmpty() || m_isActivatable.value_or(false));
}

void BusService::start(std::function<void()> failed)
{
    constexpr quint32 noFlags = 0;
    bus().call(
        BusConnection::busCall(QStringLiteral("StartServiceByName")) << name() << noFlags, this,
        [failed = std::move(failed)](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ErrorMessage)
                failed();
        },
        StartMilliseconds);
}

void BusService::follow()
{
    QDBusConnection connection = *bus().connection();
    // Sent when what the bus can start was installed or removed. From any sender: to name the
    // sender here would mean to wait for the bus.
    connection.connect(
        QString(), QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("ActivatableServicesChanged"), this, SLOT(askForActivatable()));
    askForActivatable();
}

void BusService::askForActivatable()
{
    if (bus().connection()) // else a signal of the lost bus, still in the queue
        m_question.ask(BusConnection::busCall(QStringLiteral("ListActivatableNames")));
}

void BusService::tellAvailable()
{
    const bool available = isAvailable();
    if (std::exchange(m_wasAvailable, available) != available)
        emit availableChanged();
}
