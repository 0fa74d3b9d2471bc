#include "Platform/Linux/BusService.h"

#include <utility>

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

// What is started at login may have to wait for a desktop that is still busy.
constexpr int StartMilliseconds = 60'000;

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(busName, busPath, busName, method);
}

} // namespace

BusService::BusService(MessageBus &bus, QString name, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(std::move(name))
    , m_askForOwner(bus, [this](const QDBusMessage &reply) { return takeOwner(reply); })
    , m_askForActivatable(bus, [this](const QDBusMessage &reply) { return takeActivatable(reply); })
{
    connect(&bus, &MessageBus::connected, this, &BusService::follow);
    connect(&bus, &MessageBus::disconnected, this, &BusService::loseBus);
    if (bus.connection())
        follow();
}

bool BusService::isAvailable() const
{
    return m_owner && (!m_owner->isEmpty() || m_isActivatable.value_or(false));
}

void BusService::start(std::function<void()> failed)
{
    constexpr quint32 noFlags = 0;
    m_bus.call(
        busCall(QStringLiteral("StartServiceByName")) << m_name << noFlags, m_watcher.get(),
        [failed = std::move(failed)](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ErrorMessage)
                failed();
        },
        StartMilliseconds);
}

void BusService::follow()
{
    QDBusConnection connection = *m_bus.connection();
    m_watcher = std::make_unique<QDBusServiceWatcher>(m_name, connection,
                                                      QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                m_owner = owner;
                m_askForOwner.cancel();
                tell();
            });
    // Sent when what the bus can start was installed or removed. From any sender: to name the
    // sender here would mean to wait for the bus.
    connection.connect(QString(), busPath, busName, QStringLiteral("ActivatableServicesChanged"),
                       this, SLOT(askForActivatable()));
    // Asking for the owner, unlike calling the name, does not make the bus start the service.
    m_askForOwner.ask(busCall(QStringLiteral("GetNameOwner")) << m_name);
    askForActivatable();
}

void BusService::loseBus()
{
    m_watcher.reset();
    m_owner.reset();
    m_isActivatable.reset();
    tell();
}

bool BusService::takeOwner(const QDBusMessage &reply)
{
    // A bus that hangs for a while would not tell by itself later, either.
    if (MessageBus::isTimeout(reply))
        return false;
    const bool isReply = reply.type() == QDBusMessage::ReplyMessage;
    m_owner = isReply ? reply.arguments().value(0).toString() : QString();
    tell();
    return true;
}

void BusService::askForActivatable()
{
    if (m_watcher) // else a signal of the lost bus, still in the queue
        m_askForActivatable.ask(busCall(QStringLiteral("ListActivatableNames")));
}

bool BusService::takeActivatable(const QDBusMessage &reply)
{
    if (MessageBus::isTimeout(reply))
        return false;
    // An error has a text where the list would be, which is none of its names.
    m_isActivatable = reply.arguments().value(0).toStringList().contains(m_name);
    tell();
    return true;
}

void BusService::tell()
{
    emit changed();
    const bool available = isAvailable();
    if (std::exchange(m_wasAvailable, available) != available)
        emit availableChanged();
}
