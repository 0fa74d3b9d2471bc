#pragma once

#include "Platform/KeyDownMonitor.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// The virtual key code of the key at that place of the keyboard, whatever the layout prints on
/// it; KeyDown::NoKeyCode when there is none. Hardware codes are those of X11 (evdev's plus 8),
/// which Qt reports under Wayland too.
std::uint32_t virtualKeyCode(std::uint32_t hardwareCode);

/// The way back: where the key with that virtual key code is.
std::optional<std::uint32_t> hardwareCode(std::uint32_t virtualKeyCode);

/// What XKB calls that place, up to four letters such as "AC01"; empty when there is none.
/// Servers agree on the names, but not on the codes.
std::string_view positionName(std::uint32_t virtualKeyCode);

/// The way back; KeyDown::NoKeyCode for a name that is not known.
std::uint32_t virtualKeyCodeNamed(std::string_view name);

/// The symbol that an American keyboard has there, without modifiers; 0 when there is no such key.
std::uint32_t ansiKeysym(std::uint32_t virtualKeyCode);
