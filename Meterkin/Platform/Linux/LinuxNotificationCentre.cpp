#include "Platform/Linux/LinuxNotificationCentre.h"

#include <utility>

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

// What is posted at login may have to wait for a desktop that is still busy.
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

LinuxNotificationCentre::LinuxNotificationCentre(MessageBus &bus, QObject *parent)
    : NotificationCentre(parent)
    , m_bus(bus)
{
    connect(&bus, &MessageBus::connected, this, &LinuxNotificationCentre::follow);
    connect(&bus, &MessageBus::disconnected, this, &LinuxNotificationCentre::loseBus);
    if (bus.connection())
        follow();
}

void LinuxNotificationCentre::queryAuthorization(
    std::function<void(NotificationAuthorization)> done)
{
    m_queries.push_back(std::move(done));
    QMetaObject::invokeMethod(this, &LinuxNotificationCentre::answerQueries, Qt::QueuedConnection);
}

void LinuxNotificationCentre::requestAuthorization(std::function<void(AuthorizationAnswer)> done)
{
    QMetaObject::invokeMethod(
        this,
        [this, done = std::move(done)] {
            done(isAvailable() ? AuthorizationAnswer::Granted : AuthorizationAnswer::Failed);
        },
        Qt::QueuedConnection);
}

void LinuxNotificationCentre::post(const NotificationRecord &record)
{
    if (!isAvailable())
        return;
    if (m_owner->isEmpty()) {
        if (m_waiting.empty())
            startServer();
        m_waiting.insert_or_assign(record.identifier, record);
        return;
    }
    if (!m_server) {
        m_server = std::make_unique<NotificationServer>(m_bus, *m_owner);
        connect(m_server.get(), &NotificationServer::clicked, this,
                &LinuxNotificationCentre::clicked);
    }
    m_server->post(record);
}

void LinuxNotificationCentre::follow()
{
    QDBusConnection connection = *m_bus.connection();
    m_services = std::make_unique<QDBusServiceWatcher>(NotificationServer::Service, connection,
                                                       QDBusServiceWatcher::WatchForOwnerChange);
    connect(m_services.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { setOwner(owner); });
    // From any sender: to name the sender here would mean to wait for the bus.
    connection.connect(QString(), busPath, busName, QStringLiteral("ActivatableServicesChanged"),
                       this, SLOT(askForActivatable()));
    askForOwner();
    askForActivatable();
}

void LinuxNotificationCentre::loseBus()
{
    m_services.reset();
    m_server.reset();
    m_waiting.clear();
    m_owner.reset();
    m_isActivatable.reset();
}

void LinuxNotificationCentre::askForOwner()
{
    m_bus.call(busCall(QStringLiteral("GetNameOwner")) << NotificationServer::Service,
               m_services.get(), [this](const QDBusMessage &reply) {
                   if (isSilence(reply))
                       return askForOwner();
                   const bool isReply = reply.type() == QDBusMessage::ReplyMessage;
                   setOwner(isReply ? reply.arguments().value(0).toString() : QString());
               });
}

void LinuxNotificationCentre::askForActivatable()
{
    if (!m_services)
        return; // a signal of the lost bus, still in the queue
    m_bus.call(busCall(QStringLiteral("ListActivatableNames")), m_services.get(),
               [this](const QDBusMessage &reply) {
                   if (isSilence(reply))
                       return askForActivatable();
                   // An error has a text where the list would be, which is none of its names.
                   m_isActivatable = reply.arguments().value(0).toStringList().contains(
                       NotificationServer::Service);
                   answerQueries();
               });
}

void LinuxNotificationCentre::setOwner(const QString &owner)
{
    if (m_owner != owner)
        m_server.reset();
    m_owner = owner;
    answerQueries();
    if (owner.isEmpty())
        return;
    for (const auto &[identifier, record] : std::exchange(m_waiting, {}))
        post(record);
}

void LinuxNotificationCentre::startServer()
{
    constexpr quint32 noFlags = 0;
    m_bus.call(
        busCall(QStringLiteral("StartServiceByName")) << NotificationServer::Service << noFlags,
        m_services.get(),
        [this](const QDBusMessage &reply) {
            if (reply.type() == QDBusMessage::ErrorMessage)
                m_waiting.clear(); // by the time one comes this would be old news
        },
        StartMilliseconds);
}

void LinuxNotificationCentre::answerQueries()
{
    if (!m_owner || !m_isActivatable)
        return;
    for (const auto &done : std::exchange(m_queries, {}))
        done(isAvailable() ? NotificationAuthorization::Authorized
                           : NotificationAuthorization::NotDetermined);
}

bool LinuxNotificationCentre::isAvailable() const
{
    return m_owner && (!m_owner->isEmpty() || m_isActivatable.value_or(false));
}
