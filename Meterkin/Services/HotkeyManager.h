#pragma once

#include <cstdint>
#include <functional>

class HotkeyRegistrar;

/// The program's one global hot key. Main thread only.
class HotkeyManager {
public:
    /// The registrar outlives the manager.
    explicit HotkeyManager(HotkeyRegistrar &registrar);
    ~HotkeyManager();
    HotkeyManager(const HotkeyManager &) = delete;
    HotkeyManager &operator=(const HotkeyManager &) = delete;

    /// Binds the combination in place of any earlier one; `callback` runs at each press. Why it is
    /// not bound, if it is not, is the registrar's obstacle(). The codes are those of
    /// HotkeyCombination.
    void registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                        std::function<void()> callback);

    /// Fine to call when nothing is bound.
    void unregister();

private:
    HotkeyRegistrar &m_registrar;
};
