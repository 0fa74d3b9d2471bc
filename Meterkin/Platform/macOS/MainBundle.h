#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

// The bundle that the program runs from, as Foundation tells it. Any thread.

/// Without what has no value of Qt; empty where there is none.
QVariantMap informationDictionary();

/// Absolute, without a slash at its end; the executable's folder when it lies in no bundle.
QString bundlePath();

/// Absent when the program lies in no bundle.
std::optional<QString> bundleIdentifier();
