#include "Platform/Linux/Plugins/WindowLoader.h"

#include "Platform/Linux/Plugins/Location.h"
#include "Platform/Linux/ProgramLocation.h"
#include "Platform/Linux/Updates/RestartOffer.h"
#include "Platform/Linux/Windows/Plugin.h"
#include "Platform/Log.h"

#include <QJsonObject>
#include <QPluginLoader>

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
    QPluginLoader loader(pluginFile(QStringLiteral("meterkin-windows.so")));
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    // Read from the file, before any of its code runs.
    const QString identifier = loader.metaData().value(QLatin1String("IID")).toString();
    const QString ownIdentifier = QStringLiteral(METERKIN_WINDOW_PLUGIN);
    if (!identifier.isEmpty() && identifier != ownIdentifier) {
        noteProblem(
            QStringLiteral("%1 is %2, not %3").arg(loader.fileName(), identifier, ownIdentifier));
        m_restartOffer.post(programToStart());
        return nullptr;
    }
    m_plugin = qobject_cast<WindowPlugin *>(loader.instance());
    if (m_plugin == nullptr) {
        noteProblem(loader.errorString());
        m_notifications.post({problemIdentifier, tr("Meterkin cannot show its windows"),
                              tr("A part of it, or of Qt, is missing on this computer.")});
    }
    return m_plugin;
}

void WindowPluginLoader::noteProblem(const QString &problem)
{
    if (std::exchange(m_problem, problem) != problem)
        qCWarning(logWindows, "%s: windows stay closed", qUtf8Printable(problem));
}
