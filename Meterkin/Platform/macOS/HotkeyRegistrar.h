#pragma once

#include "Platform/HotkeyRegistrar.h"

#include <memory>

// Of Carbon, whose header defines too many names to include it here.
struct OpaqueEventHandlerRef;
struct OpaqueEventHotKeyRef;

/// Hot keys of Carbon's event manager, delivered in the main event loop. Carbon does not report
/// when a combination becomes free, so a refused one is not retried.
class MacHotkeyRegistrar : public HotkeyRegistrar {
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
