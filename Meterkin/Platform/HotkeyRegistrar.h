#pragma once

#include <QProperty>

#include <cstdint>
#include <functional>

/// The bits of the modifier keys in a stored hot key, as in Carbon's Events.h. No others are
/// stored.
namespace CarbonModifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
} // namespace CarbonModifier

/// A key combination as it is stored, on every system.
struct HotkeyCombination {
    std::uint32_t keyCode = 0; ///< virtual key code of Carbon's Events.h, ANSI layout
    std::uint32_t modifiers = 0; ///< bits of CarbonModifier

    bool operator==(const HotkeyCombination &) const = default;
};

/// Why the hot key that is wanted does not work now.
enum class HotkeyObstacle {
    None, ///< it works, or the answer is not there yet, or none is wanted
    MissingKey, ///< the keyboard lacks the key or a modifier
    OtherProgram, ///< which has the combination
    NoService, ///< nothing in this session binds hot keys
    Refused, ///< by the user or the system
};

/// Binds one key combination over all programs. Main thread only.
class HotkeyRegistrar {
public:
    virtual ~HotkeyRegistrar() = default;

    /// Replaces any earlier one. `pressed` runs at each press until the next bind() or unbind(),
    /// and may call both. A combination that is refused is bound later if the system allows it
    /// then.
    virtual void bind(const HotkeyCombination &combination, std::function<void()> pressed) = 0;
    /// Fine to call when nothing is bound.
    virtual void unbind() = 0;

    /// Bindable.
    HotkeyObstacle obstacle() const { return m_obstacle; }

protected:
    void setObstacle(HotkeyObstacle obstacle) { m_obstacle = obstacle; }

private:
    QProperty<HotkeyObstacle> m_obstacle{HotkeyObstacle::None};
};
