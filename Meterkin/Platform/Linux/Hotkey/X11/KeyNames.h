#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>

/// The names that an X server's XKB extension gives to its key codes, by their place on the
/// keyboard. Without names the codes are taken for those of evdev.
struct X11KeyNames {
    static constexpr qsizetype NameSize = 4; // bytes

    std::uint32_t firstKeyCode = 0;
    QByteArray packed; ///< NameSize bytes a key code, padded with zeros

    /// The key code of the key with that virtual key code; absent when the server has none.
    std::optional<std::uint32_t> keyCode(std::uint32_t virtualKeyCode) const;
    /// The inverse; KeyDown::NoKeyCode when there is none.
    std::uint32_t virtualKeyCode(std::uint32_t keyCode) const;
};
