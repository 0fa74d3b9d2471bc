#include "Platform/Linux/ProgramLocation.h"

#include <QCoreApplication>
#include <QDir>

namespace {

/// Empty when the program runs from none.
QString appImage()
{
    const QString image = qEnvironmentVariable("APPIMAGE");
    const QString content = qEnvironmentVariable("APPDIR");
    // A program that an AppImage has started inherits its variables, and is not inside it.
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

QString programToStart()
{
    const QString image = appImage();
    return image.isEmpty() ? QCoreApplication::applicationFilePath() : image;
}
