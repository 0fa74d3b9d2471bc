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

/// A bus that hangs for a while tells nothing. Later it would not tell by itself, either.
bool isSilence(const QDBusMessage &reply)
{
    return reply.errorName() == QDBusError::errorString(QDBusError::NoReply);
}

} // namespace

BusService::BusService(MessageBus &bus, QString name, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(std::move(name))
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
                tell();
            });
    // Sent when what the bus can start was installed or removed. From any sender: to name the
    // sender here would mean to wait for the bus.
    connection.connect(QString(), busPath, busName, QStringLiteral("ActivatableServicesChanged"),
                       this, SLOT(askForActivatable()));
    askForOwner();
    askForActivatable();
}

void BusService::loseBus()
{
    m_watcher.reset();
    m_owner.reset();
    m_isActivatable.reset();
    tell();
}

void BusService::askForOwner()
{
    m_bus.call(busCall(QStringLiteral("GetNameOwner")) << m_name, m_watcher.get(),
               [this](const QDBusMessage &reply) {
                   if (isSilence(reply))
                       return askForOwner();
                   const bool isReply = reply.type() == QDBusMessage::ReplyMessage;
                   m_owner = isReply ? reply.arguments().value(0).toString() : QString();
                   tell();
               });
}

void BusService::askForActivatable()
{
    if (!m_watcher)
        return; // a signal of the lost bus, still in the queue
    m_bus.call(busCall(QStringLiteral("ListActivatableNames")), m_watcher.get(),
               [this](const QDBusMessage &reply) {
                   if (isSilence(reply))
                       return askForActivatable();
                   // An error has a text where the list would be, which is none of its names.
                   m_isActivatable = reply.arguments().value(0).toStringList().contains(m_name);
                   tell();
               });
}

void BusService::tell()
{
    emit changed();
    const bool available = isAvailable();
    if (std::exchange(m_wasAvailable, available) != available)
        emit availableChanged();
}
