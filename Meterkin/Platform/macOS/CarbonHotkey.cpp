#include "Platform/macOS/CarbonHotkey.h"

#include <Carbon/Carbon.h>

#include <utility>

namespace {

OSStatus handlePress(EventHandlerCallRef, EventRef, void *userData)
{
    if (userData == nullptr)
        return eventNotHandledErr;
    static_cast<const CarbonHotkey *>(userData)->press();
    return noErr;
}

} // namespace

bool CarbonHotkey::installPressHandler(std::function<void()> pressed)
{
    const EventTypeSpec hotkeyPressed{kEventClassKeyboard, kEventHotKeyPressed};
    EventHandlerRef handler = nullptr;
    if (InstallEventHandler(GetApplicationEventTarget(), handlePress, 1, &hotkeyPressed, this,
                            &handler)
        != noErr)
        return false;
    m_handler.reset(handler);
    m_pressed = std::move(pressed);
    return true;
}

void CarbonHotkey::removePressHandler()
{
    m_handler.reset();
    m_pressed = nullptr;
}

bool CarbonHotkey::registerHotkey(const HotkeyCombination &combination,
                                  const HotkeyIdentifier &identifier)
{
    EventHotKeyRef hotkey = nullptr;
    if (RegisterEventHotKey(combination.keyCode, combination.modifiers,
                            {identifier.signature, identifier.id}, GetApplicationEventTarget(), 0,
                            &hotkey)
        != noErr)
        return false;
    m_hotkey.reset(hotkey);
    return true;
}

void CarbonHotkey::unregisterHotkey()
{
    m_hotkey.reset();
}

void CarbonHotkey::press() const
{
    // The handler may replace or remove itself, which ends what it had captured.
    const std::function<void()> pressed = m_pressed;
    if (pressed)
        pressed();
}

void CarbonHotkey::Removal::operator()(OpaqueEventHandlerRef *handler) const
{
    RemoveEventHandler(handler);
}

void CarbonHotkey::Removal::operator()(OpaqueEventHotKeyRef *hotkey) const
{
    UnregisterEventHotKey(hotkey);
}
