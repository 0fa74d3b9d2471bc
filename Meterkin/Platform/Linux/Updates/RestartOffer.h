#pragma once

#include "Platform/NotificationCentre.h"

#include <QObject>
#include <QString>

/// Offers, by a notification, to restart the program as another one: one that was installed over
/// it, or was started while it ran. Only the user's choice restarts it. Main thread only.
class RestartOffer : public QObject {
    Q_OBJECT

public:
    /// The notification centre outlives it.
    explicit RestartOffer(NotificationCentre &notifications, QObject *parent = nullptr);

    /// Posts the notification; an earlier one is replaced. The program is an absolute path.
    void post(const QString &program);
    /// Ends the running program for that one to be started, if it can be.
    void accept(const QString &program);

    /// What to start once this program has ended; empty for nothing.
    const QString &accepted() const { return m_accepted; }

private:
    NotificationCentre &m_notifications;
    QString m_offered;
    QString m_accepted;
};
