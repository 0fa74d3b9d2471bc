#include "Platform/Linux/Storage/SettingsOwner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Of a folder that is not there, what it would be made in counts.
bool isOfAnother(QString folder)
{
    struct stat status { };
    while (stat(QFile::encodeName(folder).constData(), &status) != 0) {
        if (folder == QStringLiteral("/"))
            return false;
        folder = QFileInfo(folder).path();
    }
    return status.st_uid != geteuid();
}

} // namespace

bool wouldTakeSettingsOver()
{
    if (geteuid() != 0)
        return false;
    const QString home = QDir::homePath();
    const QString settings =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return isOfAnother(settings) || (settings.startsWith(home + u'/') && isOfAnother(home));
}
