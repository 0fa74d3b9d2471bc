#pragma once

#include "Platform/HotkeyRegistrar.h"

#include <QString>

/// The combination as desktops write shortcuts to each other, such as "CTRL+ALT+m": modifiers, then
/// the name of the key's symbol. Empty for a key that has none.
QString shortcutTrigger(const HotkeyCombination &combination);
