#pragma once

#include "Platform/HotkeyRegistrar.h"

#include <QString>

// Both take the key's keysym without modifiers; 0 for none.

/// The combination as users write it, such as "Ctrl+Alt+K"; a key without a symbol is "Key(52)".
QString combinationText(const HotkeyCombination &combination, std::uint32_t keysym);

/// The combination as in freedesktop.org's Shortcuts Specification, such as "CTRL+ALT+m"; empty for
/// a key without a symbol.
QString shortcutTrigger(const HotkeyCombination &combination, std::uint32_t keysym);
