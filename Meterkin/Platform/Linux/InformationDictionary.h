#pragma once

#include <QVariantMap>

/// What the build says of the program. Without a feed there is no "SUFeedURL".
QVariantMap informationDictionary();

/// The AppImage that the program was started from, else the folder that it lies in.
QString bundlePath();
