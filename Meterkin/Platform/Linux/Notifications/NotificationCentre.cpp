#include "Platform/Linux/Notifications/NotificationCentre.h"

#include "Platform/Log.h"

#include <utility>

LinuxNotificationCentre::LinuxNotificationCentre(BusConnection &bus, QObject *parent)
    : NotificationCentre(parent)
    , m_bus(bus)
    , m_service(bus, NotificationServer::Service)
{
    connect(&m_service, &BusService::changed, this, &LinuxNotificationCentre::follow);
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
            done(m_service.isAvailable() ? AuthorizationAnswer::Granted
                                         : AuthorizationAnswer::Failed);
        },
        Qt::QueuedConnection);
}

void LinuxNotificationCentre::post(const NotificationRecord &record)
{
    if (!m_service.isAvailable())
        return;
    const QString owner = *m_service.owner();
    if (owner.isEmpty()) {
        if (m_waiting.empty())
            m_service.start([this] {
                if (m_bus.connection() && m_bus.connection()->isConnected()) // else the bus is lost
                    qCWarning(logBus,
                              "No notification server can be started: the alert is dropped");
                m_waiting.clear(); // later it would be old news
            });
        m_waiting.insert_or_assign(record.identifier, record);
        return;
    }
    if (!m_server) {
        m_server = std::make_unique<NotificationServer>(m_bus, owner);
        connect(m_server.get(), &NotificationServer::clicked, this,
                &LinuxNotificationCentre::clicked);
    }
    m_server->post(record);
}

void LinuxNotificationCentre::follow()
{
    const std::optional<QString> &owner = m_service.owner();
    if (m_server && m_server->owner() != owner)
        m_server.reset();
    answerQueries();
    if (!owner)
        m_waiting.clear(); // with the bus
    else if (!owner->isEmpty())
        for (const auto &[identifier, record] : std::exchange(m_waiting, {}))
            post(record);
}

void LinuxNotificationCentre::answerQueries()
{
    if (!m_service.isKnown())
        return;
    for (const auto &done : std::exchange(m_queries, {}))
        done(m_service.isAvailable() ? NotificationAuthorization::Authorized
                                     : NotificationAuthorization::NotDetermined);
}
