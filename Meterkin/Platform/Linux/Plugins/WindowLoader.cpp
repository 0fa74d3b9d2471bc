#include "Platform/Linux/Plugins/WindowLoader.h"

#include "Platform/Linux/Plugins/Location.h"
#include "Platform/Linux/Windows/Plugin.h"
#include "Platform/Log.h"

#include <QJsonObject>
#include <QPluginLoader>

#include <utility>

namespace {

const QString restartIdentifier = QStringLiteral("org.meterkin.Meterkin.restart");
const QString problemIdentifier = QStringLiteral("org.meterkin.Meterkin.windows");

} // namespace

WindowPluginLoader::WindowPluginLoader(NotificationCentre &notifications,
                                       std::function<void()> restart, QObject *parent)
    : QObject(parent)
    , m_notifications(notifications)
{
    connect(&notifications, &NotificationCentre::clicked, this,
            [restart = std::move(restart)](const QString &identifier) {
                if (identifier == restartIdentifier)
                    restart();
            });
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
        refuse(QStringLiteral("%1 is %2, not %3").arg(loader.fileName(), identifier, ownIdentifier),
               restartIdentifier, tr("Meterkin was updated"),
               tr("Choose this notification to restart it."));
        return nullptr;
    }
    m_plugin = qobject_cast<WindowPlugin *>(loader.instance());
    if (m_plugin == nullptr)
        refuse(loader.errorString(), problemIdentifier, tr("Meterkin cannot show its windows"),
               tr("A part of it, or of Qt, is missing on this computer."));
    return m_plugin;
}

void WindowPluginLoader::refuse(const QString &problem, const QString &identifier,
                                const QString &title, const QString &body)
{
    if (std::exchange(m_problem, problem) != problem)
        qCWarning(logWindows, "%s: windows stay closed", qUtf8Printable(problem));
    m_notifications.post({identifier, title, body});
}
