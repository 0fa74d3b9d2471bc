#include "Platform/Linux/InformationDictionary.h"

#include <QCoreApplication>
#include <QDir>

QVariantMap informationDictionary()
{
    QVariantMap dictionary{
        {QStringLiteral("CFBundleName"), QStringLiteral("Meterkin")},
        {QStringLiteral("CFBundleShortVersionString"), QStringLiteral(METERKIN_VERSION)}};
    const QString feed = QStringLiteral(METERKIN_FEED_URL);
    if (!feed.isEmpty())
        dictionary.insert(QStringLiteral("SUFeedURL"), feed);
    return dictionary;
}

QString bundlePath()
{
    // Set by the AppImage's own starter.
    const QString image = qEnvironmentVariable("APPIMAGE");
    return QDir::cleanPath(QDir::isAbsolutePath(image) ? image
                                                       : QCoreApplication::applicationDirPath());
}
