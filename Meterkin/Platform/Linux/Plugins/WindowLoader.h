#pragma once

#include "Platform/NotificationCentre.h"

#include <QCoreApplication>
#include <QString>

class RestartOffer;
class WindowPlugin;

/// Loads the plugin with the program's windows when the first one is wanted. One of another build,
/// as after an upgrade of the running program, is refused, and the user is offered a restart. Main
/// thread only.
class WindowPluginLoader {
    Q_DECLARE_TR_FUNCTIONS(WindowPluginLoader)

public:
    /// Both outlive it.
    WindowPluginLoader(NotificationCentre &notifications, RestartOffer &restartOffer);

    /// Null where it cannot be loaded, of which the user is told. Tries again each time.
    WindowPlugin *plugin();

private:
    NotificationCentre &m_notifications;
    RestartOffer &m_restartOffer;
    WindowPlugin *m_plugin = nullptr; ///< never unloaded
    QString m_problem; ///< the last one that was logged
};
