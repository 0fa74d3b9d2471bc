#pragma once

#include "Platform/KeyDownMonitor.h"

#include <cstdint>
#include <optional>

/// The virtual key code of the key at that place of the keyboard, whatever the layout prints on
/// it; KeyDown::NoKeyCode when there is none. Hardware codes are those of X11 (evdev's plus 8),
/// which Qt reports under Wayland too.
std::uint32_t virtualKeyCode(std::uint32_t hardwareCode);

/// The way back: where the key with that virtual key code is.
std::optional<std::uint32_t> hardwareCode(std::uint32_t virtualKeyCode);
