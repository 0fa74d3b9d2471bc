#pragma once

#include <QList>

#include <cstdint>
#include <optional>

/// A key that is a modifier.
struct X11ModifierKey {
    int modifier = 0; ///< 0 to 7: Shift, Lock, Control, Mod1 to Mod5
    std::uint32_t keysym = 0;
};

/// The bits of an X server's modifiers that are not the same everywhere.
struct X11ModifierBits {
    std::uint16_t option = 0; ///< none when no key carries it
    std::uint16_t command = 0; ///< likewise
    std::uint16_t locks = 0; ///< all that are on or off whatever the user presses

    bool operator==(const X11ModifierBits &) const = default;

    /// The bits for those of CarbonModifier; absent when one of them has none.
    std::optional<std::uint16_t> mask(std::uint32_t carbonModifiers) const;
};

X11ModifierBits x11ModifierBits(const QList<X11ModifierKey> &keys);

/// Every combination of the locks, none of them included.
QList<std::uint16_t> lockCombinations(std::uint16_t locks);
