#include "Platform/Linux/NotifierWatcher.h"

#include <QDBusVariant>
#include <QFile>

#include <array>
#include <utility>

namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

struct KnownHost {
    QLatin1StringView processNamePart;
    NotifierHostKind kind;
};

// Parts, because some systems wrap programs (".waybar-wrapped") and the kernel keeps 15 characters.
constexpr std::array knownHosts{
    KnownHost{QLatin1StringView("waybar"), NotifierHostKind::Wide},
    KnownHost{QLatin1StringView("gnome-shell"), NotifierHostKind::Label},
    KnownHost{QLatin1StringView("ayatana-indicat"), NotifierHostKind::Label},
    KnownHost{QLatin1StringView("indicator-appli"), NotifierHostKind::Label},
    KnownHost{QLatin1StringView("unity-panel"), NotifierHostKind::Label},
};

QString processName(uint process)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromLocal8Bit(file.readAll()).trimmed();
}

} // namespace

const QString NotifierWatcher::Path = QStringLiteral("/StatusNotifierWatcher");
const QString NotifierWatcher::Interface = service;

NotifierWatcher::NotifierWatcher(MessageBus &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    connect(&bus, &MessageBus::connected, this, &NotifierWatcher::follow);
    connect(&bus, &MessageBus::disconnected, this, [this] {
        m_services.reset();
        setOwner(QString());
    });
    if (bus.connection())
        follow();
}

NotifierHostKind NotifierWatcher::kindOfProcess(QStringView processName)
{
    for (const KnownHost &host : knownHosts) {
        if (processName.contains(host.processNamePart))
            return host.kind;
    }
    return NotifierHostKind::Square;
}

void NotifierWatcher::follow()
{
    QDBusConnection connection = *m_bus.connection();
    m_services = std::make_unique<QDBusServiceWatcher>(service, connection,
                                                       QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_services.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { setOwner(owner); });

    // From any sender: to name the sender here would mean to wait for the bus, and all a signal
    // does is to make us ask.
    for (const QString &signal : {QStringLiteral("StatusNotifierHostRegistered"),
                                  QStringLiteral("StatusNotifierHostUnregistered")})
        connection.connect(QString(), Path, Interface, signal, this, SLOT(askForHost()));
    connection.connect(QString(), Path, propertiesInterface, QStringLiteral("PropertiesChanged"),
                       this, SLOT(askForHost()));

    // Asking for the owner, unlike calling the name, does not make the bus start a watcher.
    QDBusMessage call =
        QDBusMessage::createMethodCall(busName, busPath, busName, QStringLiteral("GetNameOwner"));
    call << service;
    m_bus.call(call, m_services.get(), [this](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ReplyMessage)
            setOwner(reply.arguments().value(0).toString());
    });
}

void NotifierWatcher::setOwner(const QString &owner)
{
    if (owner == m_owner)
        return;
    m_owner = owner;
    m_hostKind.reset();
    m_hostRegistered = false;
    update();
    if (m_owner.isEmpty())
        return;
    askForKind();
    askForHost();
}

void NotifierWatcher::askForKind()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        busName, busPath, busName, QStringLiteral("GetConnectionUnixProcessID"));
    call << m_owner;
    m_bus.call(call, this, [this, owner = m_owner](const QDBusMessage &reply) {
        if (owner != m_owner)
            return;
        // An error leaves process 0, which has no name: a square.
        m_hostKind = kindOfProcess(processName(reply.arguments().value(0).toUInt()));
        update();
    });
}

void NotifierWatcher::askForHost()
{
    if (m_owner.isEmpty())
        return;
    QDBusMessage call =
        QDBusMessage::createMethodCall(m_owner, Path, propertiesInterface, QStringLiteral("Get"));
    call << Interface << QStringLiteral("IsStatusNotifierHostRegistered");
    m_bus.call(call, this, [this, owner = m_owner](const QDBusMessage &reply) {
        if (owner != m_owner)
            return;
        m_hostRegistered = reply.type() == QDBusMessage::ReplyMessage
            && reply.arguments().value(0).value<QDBusVariant>().variant().toBool();
        update();
    });
}

void NotifierWatcher::update()
{
    if (std::exchange(m_hadHost, hasHost()) != hasHost())
        emit hostChanged();
}
