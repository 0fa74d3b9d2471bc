#include "Platform/Linux/Process/ProgramLocation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

/// Empty when the program runs from none.
QString appImage()
{
    const QString image = qEnvironmentVariable("APPIMAGE");
    const QString content = QFileInfo(qEnvironmentVariable("APPDIR")).canonicalFilePath();
    // A program that was started from an AppImage inherits its variables without lying inside.
    const bool isInside =
        !content.isEmpty() && QCoreApplication::applicationFilePath().startsWith(content + u'/');
    return isInside && QDir::isAbsolutePath(image) ? QDir::cleanPath(image) : QString();
}

/// The AppDir that has the program as its AppRun; empty when it lies in none.
QString appDir()
{
    const QString program = QCoreApplication::applicationFilePath();
    const QString folder = program.section(u'/', 0, -4); // without "/usr/bin/meterkin"
    const QFileInfo entry(folder + QStringLiteral("/AppRun"));
    return entry.canonicalFilePath() == program ? folder : QString();
}

} // namespace

QString bundlePath()
{
    for (const QString &bundle : {appImage(), appDir()}) {
        if (!bundle.isEmpty())
            return bundle;
    }
    return QCoreApplication::applicationDirPath();
}

ProgramFile programFile()
{
    const QString image = appImage();
    if (!image.isEmpty())
        return {image, QString()};
    const QString place = QCoreApplication::applicationFilePath().mid(bundlePath().size());
    return {QStringLiteral("/proc/self/exe"), place};
}

QString programToStart()
{
    const QString image = appImage();
    return image.isEmpty() ? QCoreApplication::applicationFilePath() : image;
}
