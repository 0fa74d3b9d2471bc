#pragma once

#include <QProperty>

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

/// Why the hot key that is wanted does not work now.
enum class HotkeyObstacle {
    None, ///< it works, or is still being asked for, or none is wanted
    MissingKey, ///< on the present keyboard
    OtherProgram, ///< has the combination
    NoService, ///< nothing that binds hot keys is there
    Refused, ///< by the user or the system
};

/// Binds one key combination over all programs. Main thread only.
class HotkeyRegistrar {
public:
    virtual ~HotkeyRegistrar() = default;

    /// In place of any earlier one. `pressed` runs on the main thread at each press until then or
    /// until unbind(); it may bind or unbind while it runs. What is refused stays wanted: it is
    /// bound later where the system allows that.
    virtual void bind(const HotkeyCombination &combination, const HotkeyIdentifier &identifier,
                      std::function<void()> pressed) = 0;
    /// Fine to call when nothing is bound.
    virtual void unbind() = 0;

    /// A binding that asks follows.
    HotkeyObstacle obstacle() const { return m_obstacle; }

protected:
    void setObstacle(HotkeyObstacle obstacle) { m_obstacle = obstacle; }

private:
    QProperty<HotkeyObstacle> m_obstacle{HotkeyObstacle::None};
};
