#pragma once

#include <cstdint>
#include <functional>

/// Names a hot key among those of all programs.
struct HotkeyIdentifier {
    std::uint32_t signature = 0; ///< four characters, the first in the most significant byte
    std::uint32_t id = 0;

    bool operator==(const HotkeyIdentifier &) const = default;
};

/// The bits of the modifier keys in a stored hot key; no others are ever stored.
namespace CarbonModifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
} // namespace CarbonModifier

/// A key combination as it is stored, the same on every system.
struct HotkeyCombination {
    std::uint32_t keyCode = 0; ///< virtual key code of the ANSI layout
    std::uint32_t modifiers = 0; ///< bits of CarbonModifier

    bool operator==(const HotkeyCombination &) const = default;
};

/// Binds one key combination over all programs. Main thread only.
class HotkeyRegistrar {
public:
    virtual ~HotkeyRegistrar() = default;

    /// `pressed` runs on the main thread at each press, until it is removed; it may remove or
    /// replace itself while it runs. At most one handler at a time. False when it failed.
    virtual bool installPressHandler(std::function<void()> pressed) = 0;
    virtual void removePressHandler() = 0;

    /// At most one hot key at a time. False when it is known at once that it will not work; a
    /// system that answers later and refuses leaves a hot key that does nothing.
    virtual bool registerHotkey(const HotkeyCombination &combination,
                                const HotkeyIdentifier &identifier) = 0;
    /// Only after a successful registerHotkey().
    virtual void unregisterHotkey() = 0;
};
