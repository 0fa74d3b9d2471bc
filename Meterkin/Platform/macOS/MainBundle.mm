#include "Platform/macOS/MainBundle.h"

#include "Platform/macOS/FoundationValues.h"

QVariantMap informationDictionary()
{
    return valueOf(NSBundle.mainBundle.infoDictionary).toMap();
}

QString bundlePath()
{
    return textOf(NSBundle.mainBundle.bundlePath);
}

std::optional<QString> bundleIdentifier()
{
    NSString *identifier = NSBundle.mainBundle.bundleIdentifier;
    if (identifier.length == 0)
        return std::nullopt;
    return textOf(identifier);
}
