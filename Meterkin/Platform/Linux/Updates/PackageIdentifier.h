#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// A package as PackageKit names it: "name;version;architecture;origin" (its reference manual,
/// "Package IDs").
struct PackageIdentifier {
    QString name;
    QString version;
    QString architecture; ///< may be empty
    QString text; ///< the whole, to be passed to the service unchanged

    /// Absent for a text that is no identifier or longer than any real one.
    static std::optional<PackageIdentifier> parse(const QString &text);

    /// Whether both are versions of one package.
    bool isSamePackage(const PackageIdentifier &other) const
    {
        return name == other.name && architecture == other.architecture;
    }
};
