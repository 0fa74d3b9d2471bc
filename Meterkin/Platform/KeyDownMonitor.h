#pragma once

#include <cstdint>
#include <functional>

/// The bits of the modifier keys in the flags of a key that went down.
namespace EventModifier {
inline constexpr std::uint32_t shift = 0x20000;
inline constexpr std::uint32_t control = 0x40000;
inline constexpr std::uint32_t option = 0x80000;
inline constexpr std::uint32_t command = 0x100000;
} // namespace EventModifier

/// A key as it went down.
struct KeyDown {
    static constexpr std::uint32_t NoKeyCode = 255;

    std::uint32_t keyCode = NoKeyCode; ///< virtual key code of the ANSI layout
    std::uint32_t flags = 0; ///< bits of EventModifier; others as they come
};

/// Sees the keys that go down in the program's own windows before the windows do. Keys that are
/// modifiers themselves are not reported. Main thread only.
class KeyDownMonitor {
public:
    virtual ~KeyDownMonitor() = default;

    /// Until removal, `handler` runs for each key; it returns true to swallow the key and may
    /// remove itself. At most one at a time.
    virtual void install(std::function<bool(const KeyDown &)> handler) = 0;
    /// Fine to call when none is installed.
    virtual void remove() = 0;
};
