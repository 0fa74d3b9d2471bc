#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// A package as PackageKit names it: "name;version;architecture;origin".
struct PackageIdentifier {
    QString name;
    QString version;
    QString architecture; ///< may be empty
    QString text; ///< the whole, which the service wants back as it gave it

    /// Nothing for a text that is none, or longer than any real one.
    static std::optional<PackageIdentifier> parse(const QString &text);

    /// Whether both are versions of one installed thing.
    bool isSamePackage(const PackageIdentifier &other) const
    {
        return name == other.name && architecture == other.architecture;
    }
};
