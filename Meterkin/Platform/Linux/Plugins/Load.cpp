#include "Platform/Linux/Plugins/Load.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>

namespace {

QString pluginFile(const QString &name)
{
    const QString folder = QCoreApplication::applicationDirPath() + u'/';
    const QString inBuildFolder = folder + name;
    return QFileInfo::exists(inBuildFolder)
        ? inBuildFolder
        : folder + QStringLiteral(METERKIN_PLUGIN_FOLDER "/") + name;
}

} // namespace

LoadedPlugin loadPlugin(const QString &name, const QString &identifier)
{
    QPluginLoader loader(pluginFile(name));
    loader.setLoadHints(QLibrary::PreventUnloadHint);
    const QString found = loader.metaData().value(QLatin1String("IID")).toString();
    if (!found.isEmpty() && found != identifier)
        return {nullptr,
                QStringLiteral("%1 is %2, not %3").arg(loader.fileName(), found, identifier), true};
    QObject *instance = loader.instance();
    return {instance, instance != nullptr ? QString() : loader.errorString(), false};
}
