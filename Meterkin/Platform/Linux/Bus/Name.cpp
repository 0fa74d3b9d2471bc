#include "Platform/Linux/Bus/Name.h"

#include "Platform/Log.h"

#include <utility>

BusName::BusName(BusConnection &bus, QString name, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(std::move(name))
    , m_query(bus)
{
    connect(&bus, &BusConnection::connected, this, &BusName::follow);
    connect(&bus, &BusConnection::disconnected, this, [this] {
        m_watcher.reset();
        setOwner(std::nullopt);
    });
    if (bus.connection())
        follow();
}

void BusName::follow()
{
    m_watcher = std::make_unique<QDBusServiceWatcher>(m_name, *m_bus.connection(),
                                                      QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                m_query.cancel();
                setOwner(owner);
            });
    // Unlike a call to the name itself, this does not make the bus start a service. An error says
    // that nobody owns it, and leaves an empty value.
    m_query.send<QString>(BusConnection::busCall(QStringLiteral("GetNameOwner")) << m_name,
                          [this](const BusReply<QString> &reply) { setOwner(reply.value()); });
}

void BusName::setOwner(const std::optional<QString> &owner)
{
    if (owner)
        qCDebug(logBus, "%s: %s", qUtf8Printable(m_name),
                owner->isEmpty() ? "not running" : qUtf8Printable(*owner));
    const std::optional<QString> previous = std::exchange(m_owner, owner);
    emit changed(previous);
}
