#pragma once

#include "Platform/NotificationCentre.h"

#include <QObject>

#include <functional>

class WindowPlugin;

/// Loads the plugin with the program's windows when the first one is wanted. One of another build,
/// as after an upgrade of the running program, is refused, and the user is offered a restart. Main
/// thread only.
class WindowPluginLoader : public QObject {
    Q_OBJECT

public:
    /// The notification centre outlives it.
    WindowPluginLoader(NotificationCentre &notifications, std::function<void()> restart,
                       QObject *parent = nullptr);

    /// Null where it cannot be loaded, of which the user is told. Tries again each time.
    WindowPlugin *plugin();

private:
    void refuse(const QString &problem, const QString &identifier, const QString &title,
                const QString &body);

    NotificationCentre &m_notifications;
    WindowPlugin *m_plugin = nullptr; ///< never unloaded
    QString m_problem; ///< the last one that was logged
};
