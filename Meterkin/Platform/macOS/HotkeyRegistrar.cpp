#include "Platform/macOS/HotkeyRegistrar.h"

#include "Platform/Log.h"
#include "Platform/macOS/FourCharacterCode.h"

#include <Carbon/Carbon.h>

#include <utility>

namespace {

constexpr EventHotKeyID Identifier{fourCharacterCode("MKHT"), 1};

OSStatus handlePress(EventHandlerCallRef, EventRef, void *userData)
{
    if (userData == nullptr)
        return eventNotHandledErr;
    static_cast<const MacHotkeyRegistrar *>(userData)->press();
    return noErr;
}

} // namespace

void MacHotkeyRegistrar::bind(const HotkeyCombination &combination, std::function<void()> pressed)
{
    unbind();
    const EventTypeSpec hotkeyPressed{kEventClassKeyboard, kEventHotKeyPressed};
    EventHandlerRef handler = nullptr;
    OSStatus status = InstallEventHandler(GetApplicationEventTarget(), handlePress, 1,
                                          &hotkeyPressed, this, &handler);
    if (status != noErr) {
        qCWarning(logHotkey, "The hot key does nothing: InstallEventHandler failed with %d",
                  static_cast<int>(status));
        setObstacle(HotkeyObstacle::Refused);
        return;
    }
    m_handler.reset(handler);
    m_pressed = std::move(pressed);

    EventHotKeyRef hotkey = nullptr;
    status = RegisterEventHotKey(combination.keyCode, combination.modifiers, Identifier,
                                 GetApplicationEventTarget(), 0, &hotkey);
    if (status == noErr) {
        m_hotkey.reset(hotkey);
        return;
    }
    qCWarning(logHotkey, "The hot key does nothing: RegisterEventHotKey failed with %d%s",
              static_cast<int>(status),
              status == eventHotKeyExistsErr ? ", another program has it" : "");
    unbind();
    setObstacle(status == eventHotKeyExistsErr ? HotkeyObstacle::OtherProgram
                                               : HotkeyObstacle::Refused);
}

void MacHotkeyRegistrar::unbind()
{
    m_hotkey.reset();
    m_handler.reset();
    m_pressed = nullptr;
    setObstacle(HotkeyObstacle::None);
}

void MacHotkeyRegistrar::press() const
{
    // The handler may replace or remove itself, which ends what it had captured.
    const std::function<void()> pressed = m_pressed;
    if (pressed)
        pressed();
}

void MacHotkeyRegistrar::Removal::operator()(OpaqueEventHandlerRef *handler) const
{
    RemoveEventHandler(handler);
}

void MacHotkeyRegistrar::Removal::operator()(OpaqueEventHotKeyRef *hotkey) const
{
    UnregisterEventHotKey(hotkey);
}
