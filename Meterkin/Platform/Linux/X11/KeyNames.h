#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

/// Where an X server has its keys: XKB's name of each key code. Without names the codes are
/// taken for those of evdev.
struct X11KeyNames {
    std::uint32_t firstKeyCode = 0;
    QByteArray packed; ///< four bytes a key code, filled up with zeros

    /// The key code of the key with that virtual key code; absent when the server has none.
    std::optional<std::uint32_t> keyCode(std::uint32_t virtualKeyCode) const;
    /// The way back; KeyDown::NoKeyCode when there is none.
    std::uint32_t virtualKeyCode(std::uint32_t keyCode) const;
};
