#include "Platform/Linux/Plugins/WindowLoader.h"

#include "Platform/Linux/Plugins/Load.h"
#include "Platform/Linux/Process/ProgramLocation.h"
#include "Platform/Linux/Updates/RestartOffer.h"
#include "Platform/Linux/Windows/Plugin.h"
#include "Platform/Log.h"

#include <utility>

namespace {

const QString problemIdentifier = QStringLiteral("org.meterkin.Meterkin.windows");

} // namespace

WindowPluginLoader::WindowPluginLoader(NotificationCentre &notifications,
                                       RestartOffer &restartOffer)
    : m_notifications(notifications)
    , m_restartOffer(restartOffer)
{
}

WindowPlugin *WindowPluginLoader::plugin()
{
    if (m_plugin != nullptr)
        return m_plugin;
    const LoadedPlugin plugin =
        loadPlugin(QStringLiteral("meterkin-windows.so"), QStringLiteral(METERKIN_WINDOW_PLUGIN));
    m_plugin = qobject_cast<WindowPlugin *>(plugin.instance);
    if (m_plugin != nullptr)
        return m_plugin;
    if (std::exchange(m_problem, plugin.problem) != plugin.problem)
        qCWarning(logWindows, "%s: windows stay closed", qUtf8Printable(plugin.problem));
    if (plugin.isOfOtherBuild)
        m_restartOffer.post(programToStart());
    else
        m_notifications.post({problemIdentifier, tr("Meterkin cannot show its windows"),
                              tr("A part of it, or of Qt, is missing on this computer.")});
    return nullptr;
}
