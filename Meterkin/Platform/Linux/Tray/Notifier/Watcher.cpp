#include "Platform/Linux/Tray/Notifier/Watcher.h"

#include "Platform/Linux/Tray/ProcessName.h"
#include "Platform/Log.h"

#include <utility>

namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

const char *description(NotifierHostKind kind)
{
    switch (kind) {
    case NotifierHostKind::Wide:
        return "a panel known to keep wide pictures";
    case NotifierHostKind::Label:
        return "a panel known to show a label beside the picture";
    case NotifierHostKind::Square:
    case NotifierHostKind::Titled:
    case NotifierHostKind::Premultiplied:
        break;
    }
    return "taken for a panel that squeezes pictures into squares";
}

} // namespace

const QString NotifierWatcher::Path = QStringLiteral("/StatusNotifierWatcher");
const QString NotifierWatcher::Interface = service;

NotifierWatcher::NotifierWatcher(BusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(bus, service)
    , m_query(bus)
    , m_itemsQuery(bus)
{
    connect(&m_name, &BusName::changed, this,
            [this] { setOwner(m_name.owner().value_or(QString())); });
    connect(&bus, &BusConnection::connected, this, &NotifierWatcher::followSignals);
    if (bus.connection())
        followSignals();
}

QDBusMessage NotifierWatcher::propertyCall(const QString &name) const
{
    return QDBusMessage::createMethodCall(m_owner, Path, propertiesInterface, QStringLiteral("Get"))
        << Interface << name;
}

void NotifierWatcher::followSignals()
{
    QDBusConnection connection = *m_bus.connection();
    // From any sender: to name it here would mean to wait for the bus. A signal only makes us query
    // the watcher.
    for (const QString &signal : {QStringLiteral("StatusNotifierHostRegistered"),
                                  QStringLiteral("StatusNotifierHostUnregistered")})
        connection.connect(QString(), Path, Interface, signal, this, SLOT(query()));
    connection.connect(QString(), Path, propertiesInterface, QStringLiteral("PropertiesChanged"),
                       this, SLOT(query()));
    connection.connect(QString(), Path, Interface, QStringLiteral("StatusNotifierItemUnregistered"),
                       this, SLOT(handleRemoval(QString)));
}

void NotifierWatcher::setOwner(const QString &owner)
{
    if (owner == m_owner)
        return;
    m_owner = owner;
    m_query.cancel();
    m_itemsQuery.cancel();
    m_host.reset();
    m_hostRegistered = false;
    update();
    query();
}

void NotifierWatcher::query()
{
    if (m_owner.isEmpty())
        return;
    if (!m_host) {
        m_query.send<uint>(BusConnection::busCall(QStringLiteral("GetConnectionUnixProcessID"))
                               << m_owner,
                           [this](const BusReply<uint> &reply) {
                               // After an error this is process 0, which has no name.
                               const QString process = processName(reply.value());
                               m_host = notifierHost(process);
                               qCDebug(logTray, "The StatusNotifierWatcher %s is \"%s\", %s",
                                       qUtf8Printable(m_owner), qUtf8Printable(process),
                                       description(m_host->kind));
                               query();
                           });
        return;
    }
    // Repeated after any error: nothing else says when a watcher that starts, or hangs, is ready.
    m_query.send<QVariant>(
        propertyCall(QStringLiteral("IsStatusNotifierHostRegistered")),
        [this](const BusReply<QVariant> &reply) {
            m_hostRegistered = reply.value().toBool();
            update();
        },
        RepeatedCall::RepeatAfter::AnyError);
}

void NotifierWatcher::readItems()
{
    if (m_owner.isEmpty())
        return;
    m_itemsQuery.send<QVariant>(propertyCall(QStringLiteral("RegisteredStatusNotifierItems")),
                                [this](const BusReply<QVariant> &reply) {
                                    if (reply.value().metaType()
                                        == QMetaType::fromType<QStringList>())
                                        emit itemsRead(reply.value().toStringList());
                                });
}

void NotifierWatcher::handleRemoval(const QString &item)
{
    emit itemRemoved(item);
    readItems();
}

void NotifierWatcher::update()
{
    if (std::exchange(m_hadHost, hasHost()) == hasHost())
        return;
    qCDebug(logTray, "The StatusNotifierWatcher has %s", hasHost() ? "a host" : "no host");
    emit hostChanged();
}
