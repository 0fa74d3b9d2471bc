#pragma once

#include <QVariantMap>

/// What the build says of the program. Without a feed there is no "SUFeedURL".
QVariantMap informationDictionary();
