#include "Platform/Linux/Plugins/LayerShell.h"

#include "Platform/Linux/Plugins/Location.h"
#include "Platform/Log.h"

#include "PluginIdentifier.h"

#include <QGuiApplication>
#include <QJsonObject>
#include <QPluginLoader>

namespace {

LayerShell *load()
{
    if (QGuiApplication::platformName() != u"wayland")
        return nullptr;
    QPluginLoader loader(pluginFile(QStringLiteral("meterkin-wayland.so")));
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    const QString identifier = loader.metaData().value(QLatin1String("IID")).toString();
    if (identifier == QStringLiteral(METERKIN_LAYER_SHELL)) {
        if (auto *shell = qobject_cast<LayerShell *>(loader.instance()))
            return shell;
    }
    qCWarning(logWindows, "%s does not load (%s): the compositor places the dashboard",
              qUtf8Printable(loader.fileName()),
              qUtf8Printable(identifier.isEmpty() ? loader.errorString() : identifier));
    return nullptr;
}

} // namespace

LayerShell *layerShell()
{
    static LayerShell *const shell = load();
    return shell;
}
