#pragma once

#include "Platform/KeyDownMonitor.h"

#include <cstdint>
#include <optional>
#include <string_view>

// Hardware codes are those of X11: evdev's of <linux/input-event-codes.h> plus 8. Qt reports them
// under Wayland, too.

/// The virtual key code of the key at that place of the keyboard, whatever the layout;
/// KeyDown::NoKeyCode when there is none.
std::uint32_t virtualKeyCode(std::uint32_t hardwareCode);

/// The inverse.
std::optional<std::uint32_t> hardwareCode(std::uint32_t virtualKeyCode);

/// XKB's name of the place, up to four letters such as "AC01", as in the "evdev" file of
/// xkeyboard-config's key codes; empty when there is none. Names are the same on all X servers,
/// hardware codes are not.
std::string_view positionName(std::uint32_t virtualKeyCode);

/// The inverse; KeyDown::NoKeyCode for an unknown name.
std::uint32_t virtualKeyCodeNamed(std::string_view name);

/// The symbol of that key on an American keyboard, without modifiers; 0 when there is no such key.
std::uint32_t ansiKeysym(std::uint32_t virtualKeyCode);
