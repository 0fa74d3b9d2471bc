#include "Platform/macOS/HotkeyRegistrar.h"
#include "Support/TestMain.h"

#include <Carbon/Carbon.h>

#include <QtTest>

namespace {

/// Carbon's event manager, with what is installed at the moment.
struct EventManager {
    OSStatus registerStatus = noErr;
    int handlers = 0;
    int hotkeys = 0;
    EventHandlerUPP handler = nullptr; ///< the newest
    void *userData = nullptr;
};
EventManager manager;

} // namespace

EventTargetRef GetApplicationEventTarget()
{
    return reinterpret_cast<EventTargetRef>(&manager);
}

OSStatus InstallEventHandler(EventTargetRef, EventHandlerUPP handler, ItemCount,
                             const EventTypeSpec *, void *userData, EventHandlerRef *result)
{
    ++manager.handlers;
    manager.handler = handler;
    manager.userData = userData;
    *result = reinterpret_cast<EventHandlerRef>(&manager.handlers);
    return noErr;
}

OSStatus RemoveEventHandler(EventHandlerRef)
{
    --manager.handlers;
    return noErr;
}

OSStatus RegisterEventHotKey(UInt32, UInt32, EventHotKeyID, EventTargetRef, OptionBits,
                             EventHotKeyRef *result)
{
    if (manager.registerStatus != noErr)
        return manager.registerStatus;
    ++manager.hotkeys;
    *result = reinterpret_cast<EventHotKeyRef>(&manager.hotkeys);
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef)
{
    --manager.hotkeys;
    return noErr;
}

class HotkeyRegistrarTest : public QObject {
    Q_OBJECT

private slots:
    void bindsOneAtATime()
    {
        MacHotkeyRegistrar registrar;
        int presses = 0;
        // What the handler captured is used after it was replaced.
        registrar.bind({46, 0x1800}, [&, count = std::make_shared<int>(5)] {
            registrar.bind({96, 0x300}, [&] { ++presses; });
            presses += *count;
        });
        for (int press = 0; press < 2; ++press)
            QCOMPARE(manager.handler(nullptr, nullptr, manager.userData), noErr);
        QCOMPARE(presses, 6);
        QCOMPARE(std::pair(manager.handlers, manager.hotkeys), std::pair(1, 1));
        manager.registerStatus = eventHotKeyExistsErr;
        registrar.bind({46, 0x1800}, [&] { ++presses; });
        QCOMPARE(registrar.obstacle(), HotkeyObstacle::OtherProgram);
        QCOMPARE(std::pair(manager.handlers, manager.hotkeys), std::pair(0, 0));
    }
};

METERKIN_TEST(HotkeyRegistrarTest);
#include "HotkeyRegistrarTest.moc"
