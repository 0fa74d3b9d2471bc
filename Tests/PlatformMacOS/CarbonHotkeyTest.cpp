#include "Platform/macOS/CarbonHotkey.h"
#include "Fakes/CallLog.h"
#include "Fakes/FakeHotkeys.h"
#include "Services/HotkeyManager.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

const QString Install = QStringLiteral("install application 1 6b657962 5");
const QString Register = QStringLiteral("register 46 0x1800 as 4d4b4854 1 at application 0");
const QString Unregister = QStringLiteral("unregister");
const QString Remove = QStringLiteral("remove");

std::pair<int, int> installed()
{
    return {FakeHotkeys::manager().handlers, FakeHotkeys::manager().hotkeys};
}

} // namespace

class CarbonHotkeyTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        FakeHotkeys::manager() = {};
        CallLog::take();
    }

    // One combination twice; the system may refuse the second time.
    void oneHotkeyAtATime_data()
    {
        QTest::addColumn<int>("installStatus");
        QTest::addColumn<int>("registerStatus");
        QTest::addColumn<HotkeyObstacle>("obstacle");
        QTest::addColumn<QStringList>("calls");
        const QStringList replaced{Unregister, Remove, Install};
        QTest::newRow("works") << 0 << 0 << HotkeyObstacle::None
                               << (replaced + QStringList{Register});
        QTest::newRow("no handler") << -9860 << 0 << HotkeyObstacle::Refused << replaced;
        QTest::newRow("no key") << 0 << static_cast<int>(eventHotKeyExistsErr)
                                << HotkeyObstacle::OtherProgram
                                << (replaced + QStringList{Register, Remove});
    }
    void oneHotkeyAtATime()
    {
        QFETCH(const int, installStatus);
        QFETCH(const int, registerStatus);
        const int count = installStatus == 0 && registerStatus == 0 ? 1 : 0;
        FakeHotkeys &system = FakeHotkeys::manager();
        CarbonHotkey registrar;
        int presses = 0;
        {
            HotkeyManager manager(registrar);
            manager.registerHotkey(46, 0x1800, [&] { presses += 10; });
            QCOMPARE(CallLog::take(), QStringList({Install, Register}));
            system.installStatus = installStatus;
            system.registerStatus = registerStatus;
            manager.registerHotkey(46, 0x1800, [&] { ++presses; });
            QTEST(CallLog::take(), "calls");
            QTEST(registrar.obstacle(), "obstacle");
            QCOMPARE(installed(), std::pair(count, count));
            // Even one that is still on its way when nothing is installed any more.
            QCOMPARE(system.press(), noErr);
            QCOMPARE(presses, count);
        }
        QCOMPARE(CallLog::take(), count == 1 ? QStringList({Unregister, Remove}) : QStringList());
        QCOMPARE(installed(), std::pair(0, 0));
    }

    void pressWithoutRegistrarIsNotHandled()
    {
        CarbonHotkey registrar;
        registrar.bind({46, 0x1800}, {1, 1}, [] {});
        FakeHotkeys::manager().userData = nullptr;
        QCOMPARE(FakeHotkeys::manager().press(), -9874);
    }

    void handlerMayEndItself_data()
    {
        QTest::addColumn<bool>("replaces");
        QTest::newRow("removed") << false;
        QTest::newRow("replaced") << true;
    }
    void handlerMayEndItself()
    {
        QFETCH(const bool, replaces);
        CarbonHotkey registrar;
        HotkeyManager manager(registrar);
        int presses = 0;
        // What the handler captured is used after it was replaced.
        manager.registerHotkey(46, 0x1800, [&, count = std::make_shared<int>(5)] {
            manager.unregister();
            if (replaces)
                manager.registerHotkey(96, 0x300, [&] { ++presses; });
            presses += *count;
        });
        QCOMPARE(FakeHotkeys::manager().press(), noErr);
        QCOMPARE(FakeHotkeys::manager().press(), noErr);
        QCOMPARE(presses, replaces ? 6 : 5);
    }

    void destructionRemovesAll()
    {
        {
            CarbonHotkey registrar;
            registrar.bind({46, 0x1800}, {1, 1}, [] {});
            QCOMPARE(installed(), std::pair(1, 1));
        }
        QCOMPARE(installed(), std::pair(0, 0));
    }
};

METERKIN_TEST(CarbonHotkeyTest);
#include "CarbonHotkeyTest.moc"
