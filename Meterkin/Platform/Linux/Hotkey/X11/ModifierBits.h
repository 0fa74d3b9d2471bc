#pragma once

#include <QList>

#include <cstdint>
#include <optional>

/// A key and the modifier that it sets.
struct X11ModifierKey {
    int modifier = 0; ///< 0 to 7: Shift, Lock, Control, Mod1 to Mod5
    std::uint32_t keysym = 0;
};

/// Those bits of an X server's modifiers that each keyboard map assigns for itself.
struct X11ModifierBits {
    std::uint16_t option = 0; ///< none when no key carries it
    std::uint16_t command = 0; ///< likewise
    std::uint16_t locks = 0; ///< Caps Lock, Num Lock, Scroll Lock: on or off at any press

    bool operator==(const X11ModifierBits &) const = default;

    /// From bits of CarbonModifier; absent when one of them has no bit here.
    std::optional<std::uint16_t> mask(std::uint32_t carbonModifiers) const;
};

X11ModifierBits x11ModifierBits(const QList<X11ModifierKey> &keys);

/// Every combination of the locks, the empty one included.
QList<std::uint16_t> lockCombinations(std::uint16_t locks);
