#include "Platform/Linux/Bus/Service.h"

#include <utility>

namespace {

// At login it may have to wait for a desktop that is still busy.
constexpr std::chrono::minutes StartTimeout{1};

} // namespace

BusService::BusService(BusConnection &bus, const QString &name, QObject *parent)
    : BusName(bus, name, parent)
    , m_query(bus)
{
    connect(this, &BusName::changed, this, &BusService::updateAvailable);
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
    bus().call<quint32>(
        BusConnection::busCall(QStringLiteral("StartServiceByName")) << name() << noFlags, this,
        [failed = std::move(failed)](const BusReply<quint32> &reply) {
            if (!reply.isValid())
                failed();
        },
        StartTimeout);
}

void BusService::follow()
{
    QDBusConnection connection = *bus().connection();
    // Sent when a service was installed or removed. From any sender: to name it here would mean to
    // wait for the bus.
    connection.connect(
        QString(), QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("ActivatableServicesChanged"), this, SLOT(queryActivatable()));
    queryActivatable();
}

void BusService::queryActivatable()
{
    if (!bus().connection()) // a signal of the lost bus, still in the queue
        return;
    m_query.send<QStringList>(BusConnection::busCall(QStringLiteral("ListActivatableNames")),
                              [this](const BusReply<QStringList> &reply) {
                                  m_isActivatable = reply.value().contains(name());
                                  emit changed(owner());
                              });
}

void BusService::updateAvailable()
{
    const bool available = isAvailable();
    if (std::exchange(m_wasAvailable, available) != available)
        emit availableChanged();
}
