#include "Platform/Linux/ProgramLocation.h"

#include <QCoreApplication>
#include <QDir>

namespace {

/// Empty when the program runs from none.
QString appImage()
{
    const QString image = qEnvironmentVariable("APPIMAGE");
    const QString content = qEnvironmentVariable("APPDIR");
    // A program that was started from an AppImage inherits its variables without lying inside.
    const bool isInside =
        !content.isEmpty() && QCoreApplication::applicationFilePath().startsWith(content + u'/');
    return isInside && QDir::isAbsolutePath(image) ? QDir::cleanPath(image) : QString();
}

} // namespace

QString bundlePath()
{
    const QString image = appImage();
    return image.isEmpty() ? QCoreApplication::applicationDirPath() : image;
}

ProgramFile programFile()
{
    const QString image = appImage();
    if (!image.isEmpty())
        return {image, QString()};
    const QString name = QCoreApplication::applicationFilePath().section(u'/', -1);
    return {QStringLiteral("/proc/self/exe"), u'/' + name};
}

QString programToStart()
{
    const QString image = appImage();
    return image.isEmpty() ? QCoreApplication::applicationFilePath() : image;
}
