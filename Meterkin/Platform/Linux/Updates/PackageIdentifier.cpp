#include "Platform/Linux/Updates/PackageIdentifier.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr qsizetype LongestText = 512;

bool isPlain(const QString &text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar character) { return character.isPrint(); });
}

} // namespace

std::optional<PackageIdentifier> PackageIdentifier::parse(const QString &text)
{
    if (text.size() > LongestText || !isPlain(text))
        return std::nullopt;
    const QStringList parts = text.split(u';');
    if (parts.size() != 4 || parts[0].isEmpty() || parts[1].isEmpty())
        return std::nullopt;
    return PackageIdentifier{parts[0], parts[1], parts[2], text};
}
