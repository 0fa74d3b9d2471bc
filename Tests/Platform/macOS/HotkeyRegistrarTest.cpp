#include "Platform/macOS/HotkeyRegistrar.h"
#include "Support/TestMain.h"

#include <Carbon/Carbon.h>

#include <QtTest>

namespace {

/// Carbon's event manager, with what is installed at the moment.
struct EventManager {
    OSStatus installStatus = noErr;
    OSStatus registerStatus = noErr;
    int handlers = 0;
    int hotkeys = 0;
    EventHandlerUPP handler = nullptr; ///< the newest
    void *userData = nullptr;
    QString registered; ///< the newest: code, modifiers, signature, identifier

    OSStatus press() const { return handler(nullptr, nullptr, userData); }
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
    if (manager.installStatus != noErr)
        return manager.installStatus;
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

OSStatus RegisterEventHotKey(UInt32 code, UInt32 modifiers, EventHotKeyID identifier,
                             EventTargetRef, OptionBits, EventHotKeyRef *result)
{
    if (manager.registerStatus != noErr)
        return manager.registerStatus;
    manager.registered =
        QString::asprintf("%u 0x%x %x %u", code, modifiers, identifier.signature, identifier.id);
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
    // A combination replaces another one; the system may refuse the second.
    void bindsOneAtATime()
    {
        const struct {
            OSStatus installStatus;
            OSStatus registerStatus;
            HotkeyObstacle obstacle;
        } cases[]{
            {0, 0, HotkeyObstacle::None},
            {-9860, 0, HotkeyObstacle::Refused},
            {0, -1, HotkeyObstacle::Refused},
            {0, eventHotKeyExistsErr, HotkeyObstacle::OtherProgram},
        };
        for (const auto &[installStatus, registerStatus, obstacle] : cases) {
            const int count = obstacle == HotkeyObstacle::None ? 1 : 0;
            manager = {};
            MacHotkeyRegistrar registrar;
            int presses = 0;
            registrar.bind({46, 0x1800}, [&] { presses += 10; });
            QCOMPARE(manager.registered, QStringLiteral("46 0x1800 4d4b4854 1"));
            manager.installStatus = installStatus;
            manager.registerStatus = registerStatus;
            registrar.bind({96, 0x300}, [&] { ++presses; });
            QCOMPARE(registrar.obstacle(), obstacle);
            QCOMPARE(std::pair(manager.handlers, manager.hotkeys), std::pair(count, count));
            // A press may still arrive when nothing is bound any more.
            QCOMPARE(manager.press(), noErr);
            QCOMPARE(presses, count);
        }
        QCOMPARE(manager.handlers + manager.hotkeys, 0); // at the end of a registrar
    }

    void handlerMayReplaceItself()
    {
        manager = {};
        MacHotkeyRegistrar registrar;
        int presses = 0;
        // What the handler captured is used after it was replaced.
        registrar.bind({46, 0x1800}, [&, count = std::make_shared<int>(5)] {
            registrar.unbind();
            registrar.bind({96, 0x300}, [&] { ++presses; });
            presses += *count;
        });
        QCOMPARE(manager.press(), noErr);
        QCOMPARE(manager.press(), noErr);
        QCOMPARE(presses, 6);
        manager.userData = nullptr;
        QCOMPARE(manager.press(), static_cast<OSStatus>(eventNotHandledErr));
    }
};

METERKIN_TEST(HotkeyRegistrarTest);
#include "HotkeyRegistrarTest.moc"
