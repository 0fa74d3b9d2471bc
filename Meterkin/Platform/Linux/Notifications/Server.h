#pragma once

#include "Platform/Linux/Bus/Connection.h"
#include "Platform/NotificationCentre.h"

#include <map>
#include <optional>

/// One running owner of org.freedesktop.Notifications, and our notifications in its list, by
/// numbers that mean nothing to the next owner: "Desktop Notifications Specification" of
/// freedesktop.org. Main thread only.
class NotificationServer : public QObject {
    Q_OBJECT

public:
    static const QString Service;

    /// `owner` is its unique bus name. The bus outlives this object.
    NotificationServer(BusConnection &bus, const QString &owner, QObject *parent = nullptr);

    const QString &owner() const { return m_owner; }

    /// Returns at once; a failure is only logged. While an earlier post of the same identifier is
    /// unanswered, the newest one waits.
    void post(const NotificationRecord &record);

signals:
    void clicked(const QString &identifier);

private slots:
    void handleAction(const QDBusMessage &message);
    void takeActivationToken(const QDBusMessage &message);
    void handleClosed(const QDBusMessage &message);

private:
    struct Capabilities {
        bool takesActions = false;
        bool takesMarkup = false;
    };
    struct Listing {
        uint number = 0; ///< the server's own for it, 0 when it is not listed
        bool isPosting = false;
        std::optional<NotificationRecord> next;
    };

    void askForCapabilities();
    void postNext(const QString &identifier, const Capabilities &capabilities);
    std::optional<QString> listed(uint number) const;
    QDBusMessage methodCall(const QString &method) const;

    BusConnection &m_bus;
    QString m_owner;
    std::optional<Capabilities> m_capabilities; ///< absent until the server has told them
    bool m_isAsking = false;
    bool m_hasWarned = false;
    std::map<QString, Listing> m_listings; ///< by identifier
};
