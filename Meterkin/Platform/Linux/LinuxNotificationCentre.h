#pragma once

#include "Platform/Linux/MessageBus.h"
#include "Platform/Linux/NotificationServer.h"
#include "Platform/NotificationCentre.h"

#include <QDBusServiceWatcher>

#include <map>
#include <memory>
#include <optional>
#include <vector>

/// Notifications over org.freedesktop.Notifications. The desktop asks nobody for permission: we are
/// authorised when there is a notification server, or the bus can start one.
class LinuxNotificationCentre : public NotificationCentre {
    Q_OBJECT

public:
    /// The bus outlives the centre.
    explicit LinuxNotificationCentre(MessageBus &bus, QObject *parent = nullptr);

    /// Answered once there is a bus and it has told.
    void queryAuthorization(std::function<void(NotificationAuthorization)> done) override;
    /// Answered from what is known by now, without a call on the bus.
    void requestAuthorization(std::function<void(AuthorizationAnswer)> done) override;
    void post(const NotificationRecord &record) override;

private slots:
    void askForActivatable();

private:
    void follow();
    void loseBus();
    void askForOwner();
    void setOwner(const QString &owner);
    void startServer();
    void answerQueries();
    bool isAvailable() const;

    MessageBus &m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_services;
    std::optional<QString> m_owner; ///< a unique bus name, empty for none; absent while unknown
    std::optional<bool> m_isActivatable; ///< absent while unknown
    std::unique_ptr<NotificationServer> m_server; ///< that of m_owner, from the first post on
    std::map<QString, NotificationRecord> m_waiting; ///< for a server to start, by identifier
    std::vector<std::function<void(NotificationAuthorization)>> m_queries; ///< unanswered
};
