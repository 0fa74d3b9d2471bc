#pragma once

#include "Platform/Linux/Bus/Service.h"
#include "Platform/Linux/Notifications/Server.h"
#include "Platform/NotificationCentre.h"

#include <map>
#include <memory>
#include <vector>

/// Notifications over org.freedesktop.Notifications. The desktop needs no permission: we are
/// authorised when a notification server runs, or the bus can start one. Main thread only.
class LinuxNotificationCentre : public NotificationCentre {
    Q_OBJECT

public:
    /// The bus outlives the centre.
    explicit LinuxNotificationCentre(BusConnection &bus, QObject *parent = nullptr);

    /// Calls `done` once there is a bus and the server's state is known.
    void queryAuthorization(std::function<void(NotificationAuthorization)> done) override;
    /// Calls `done` later with what is known by then, without a call on the bus.
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
