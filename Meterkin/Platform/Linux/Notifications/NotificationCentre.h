#pragma once

#include "Platform/Linux/Bus/Service.h"
#include "Platform/Linux/Notifications/Server.h"
#include "Platform/NotificationCentre.h"

#include <map>
#include <memory>
#include <vector>

/// Notifications over org.freedesktop.Notifications. The desktop asks nobody for permission: we are
/// authorised when there is a notification server, or the bus can start one.
class LinuxNotificationCentre : public NotificationCentre {
    Q_OBJECT

public:
    /// The bus outlives the centre.
    explicit LinuxNotificationCentre(BusConnection &bus, QObject *parent = nullptr);

    /// Answered once there is a bus and it has told.
    void queryAuthorization(std::function<void(NotificationAuthorization)> done) override;
    /// Answered from what is known by now, without a call on the bus.
    void requestAuthorization(std::function<void(AuthorizationAnswer)> done) override;
    void post(const NotificationRecord &record) override;

private:
    void follow();
    void answerQueries();

    BusConnection &m_bus;
    BusService m_service;
    std::unique_ptr<NotificationServer> m_server; ///< the service's owner, from the first post on
    std::map<QString, NotificationRecord> m_waiting; ///< for a server to start, by identifier
    std::vector<std::function<void(NotificationAuthorization)>> m_queries; ///< unanswered
};
