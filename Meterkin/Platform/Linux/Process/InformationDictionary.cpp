#include "Platform/Linux/Process/InformationDictionary.h"

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
