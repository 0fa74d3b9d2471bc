#include "Platform/Linux/Tray/Notifier/Watcher.h"

#include <QDBusVariant>
#include <QFile>

#include <array>
#include <utility>

namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
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

NotifierWatcher::NotifierWatcher(BusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(bus, service)
    , m_query(bus)
{
    connect(&m_name, &BusName::changed, this,
            [this] { setOwner(m_name.owner().value_or(QString())); });
    connect(&bus, &BusConnection::connected, this, &NotifierWatcher::followSignals);
    if (bus.connection())
        followSignals();
}

NotifierHostKind NotifierWatcher::kindOfProcess(QStringView processName)
{
    for (const KnownHost &host : knownHosts) {
        if (processName.contains(host.processNamePart))
            return host.kind;
    }
    return NotifierHostKind::Square;
}

void NotifierWatcher::followSignals()
{
    QDBusConnection connection = *m_bus.connection();
    // From any sender: to name the sender here would mean to wait for the bus, and all a signal
    // does is to make us ask.
    for (const QString &signal : {QStringLiteral("StatusNotifierHostRegistered"),
                                  QStringLiteral("StatusNotifierHostUnregistered")})
        connection.connect(QString(), Path, Interface, signal, this, SLOT(query()));
    connection.connect(QString(), Path, propertiesInterface, QStringLiteral("PropertiesChanged"),
                       this, SLOT(query()));
}

void NotifierWatcher::setOwner(const QString &owner)
{
    if (owner == m_owner)
        return;
    m_owner = owner;
    m_query.cancel();
    m_hostKind.reset();
    m_hostRegistered = false;
    update();
    query();
}

void NotifierWatcher::query()
{
    if (m_owner.isEmpty())
        return;
    if (!m_hostKind) {
        m_query.send<uint>(BusConnection::busCall(QStringLiteral("GetConnectionUnixProcessID"))
                               << m_owner,
                           [this](const BusReply<uint> &reply) {
                               // An error leaves process 0, which has no name: a square.
                               m_hostKind = kindOfProcess(processName(reply.value()));
                               query();
                           });
        return;
    }
    // After any error: nothing else tells when a watcher that is not ready yet, or hangs, is ready.
    m_query.send<QVariant>(
        QDBusMessage::createMethodCall(m_owner, Path, propertiesInterface, QStringLiteral("Get"))
            << Interface << QStringLiteral("IsStatusNotifierHostRegistered"),
        [this](const BusReply<QVariant> &reply) {
            m_hostRegistered = reply.value().toBool();
            update();
        },
        RepeatedCall::RepeatAfter::AnyError);
}

void NotifierWatcher::update()
{
    if (std::exchange(m_hadHost, hasHost()) != hasHost())
        emit hostChanged();
}
