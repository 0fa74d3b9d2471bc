#pragma once

#include "Platform/HotkeyRegistrar.h"

#include <memory>

// The event manager's own types; its header brings too many names for everybody to see.
struct OpaqueEventHandlerRef;
struct OpaqueEventHotKeyRef;

/// The hot keys of the system's event manager. Its events come with those of the main loop. It
/// tells nobody when a combination is free again: what it refuses is not tried again.
class CarbonHotkey : public HotkeyRegistrar {
public:
    void bind(const HotkeyCombination &combination, std::function<void()> pressed) override;
    void unbind() override;

    /// Runs the press handler, if there is one: for the event manager.
    void press() const;

private:
    struct Removal {
        void operator()(OpaqueEventHandlerRef *handler) const;
        void operator()(OpaqueEventHotKeyRef *hotkey) const;
    };

    std::function<void()> m_pressed;
    std::unique_ptr<OpaqueEventHandlerRef, Removal> m_handler;
    std::unique_ptr<OpaqueEventHotKeyRef, Removal> m_hotkey;
};
