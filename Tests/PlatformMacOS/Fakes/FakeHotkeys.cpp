#include "Fakes/FakeHotkeys.h"

#include "Fakes/CallLog.h"

namespace {

/// A reference that the fake gives out.
template <typename Reference> Reference reference(char &object)
{
    return reinterpret_cast<Reference>(&object);
}

char target;
char handlerObject;
char hotkeyObject;

const char *nameOf(EventTargetRef given)
{
    return given == reference<EventTargetRef>(target) ? "application" : "elsewhere";
}

} // namespace

FakeHotkeys &FakeHotkeys::manager()
{
    static FakeHotkeys fake;
    return fake;
}

EventTargetRef GetApplicationEventTarget()
{
    return reference<EventTargetRef>(target);
}

OSStatus InstallEventHandler(EventTargetRef eventTarget, EventHandlerUPP handler, ItemCount count,
                             const EventTypeSpec *types, void *userData, EventHandlerRef *result)
{
    FakeHotkeys &manager = FakeHotkeys::manager();
    CallLog::note(QString::asprintf("install %s %lu %x %u", nameOf(eventTarget), count,
                                    types->eventClass, types->eventKind));
    if (manager.installStatus != noErr)
        return manager.installStatus;
    ++manager.handlers;
    manager.handler = handler;
    manager.userData = userData;
    *result = reference<EventHandlerRef>(handlerObject);
    return noErr;
}

OSStatus RemoveEventHandler(EventHandlerRef handler)
{
    CallLog::note(QStringLiteral("remove"));
    if (handler == reference<EventHandlerRef>(handlerObject))
        --FakeHotkeys::manager().handlers;
    return noErr;
}

OSStatus RegisterEventHotKey(UInt32 code, UInt32 modifiers, EventHotKeyID identifier,
                             EventTargetRef eventTarget, OptionBits options, EventHotKeyRef *result)
{
    FakeHotkeys &manager = FakeHotkeys::manager();
    CallLog::note(QString::asprintf("register %u 0x%x as %x %u at %s %u", code, modifiers,
                                    identifier.signature, identifier.id, nameOf(eventTarget),
                                    options));
    if (manager.registerStatus != noErr)
        return manager.registerStatus;
    ++manager.hotkeys;
    *result = reference<EventHotKeyRef>(hotkeyObject);
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotkey)
{
    CallLog::note(QStringLiteral("unregister"));
    if (hotkey == reference<EventHotKeyRef>(hotkeyObject))
        --FakeHotkeys::manager().hotkeys;
    return noErr;
}
