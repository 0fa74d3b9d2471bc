#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

// The bundle that the program runs from. Any thread.

/// Its Info.plist, without values that Qt has no type for. Empty without a bundle.
QVariantMap informationDictionary();

/// Absolute, without a slash at its end; the executable's folder when it lies in no bundle.
QString bundlePath();

/// Absent when the program lies in no bundle.
std::optional<QString> bundleIdentifier();
