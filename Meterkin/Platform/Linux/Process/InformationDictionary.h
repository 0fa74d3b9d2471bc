#pragma once

#include <QVariantMap>

/// Name, version and feed of this build, as Platform::informationDictionary() describes them.
QVariantMap informationDictionary();
