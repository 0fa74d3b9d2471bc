#include "Platform/Linux/Plugins/LayerShell.h"

#include "Platform/Linux/Plugins/Load.h"
#include "Platform/Log.h"

#include "PluginIdentifier.h"

#include <QGuiApplication>

namespace {

LayerShell *load()
{
    if (QGuiApplication::platformName() != u"wayland")
        return nullptr;
    const LoadedPlugin plugin =
        loadPlugin(QStringLiteral("meterkin-wayland.so"), QStringLiteral(METERKIN_LAYER_SHELL));
    if (plugin.instance == nullptr)
        qCWarning(logWindows, "%s: the compositor places the dashboard",
                  qUtf8Printable(plugin.problem));
    return qobject_cast<LayerShell *>(plugin.instance);
}

} // namespace

LayerShell *layerShell()
{
    static LayerShell *const shell = load();
    return shell;
}
