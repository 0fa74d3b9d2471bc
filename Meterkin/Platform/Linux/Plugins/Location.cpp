#include "Platform/Linux/Plugins/Location.h"

#include <QCoreApplication>
#include <QFileInfo>

QString pluginFile(const QString &name)
{
    const QString folder = QCoreApplication::applicationDirPath() + u'/';
    const QString inBuildFolder = folder + name;
    return QFileInfo::exists(inBuildFolder)
        ? inBuildFolder
        : folder + QStringLiteral(METERKIN_PLUGIN_FOLDER "/") + name;
}
