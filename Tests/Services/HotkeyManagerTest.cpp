#include "Services/HotkeyManager.h"
#include "Support/ScriptedServices.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

const QString registerMCall = QStringLiteral("register 46+0x1800 as MKHT 1");
const QString registerF5Call = QStringLiteral("register 96+0x300 as MKHT 1");
const QString installCall = QStringLiteral("install");
const QString removeCall = QStringLiteral("remove");
const QString unregisterCall = QStringLiteral("unregister");

} // namespace

class HotkeyManagerTest : public QObject {
    Q_OBJECT

private slots:
    void laterCombinationReplacesEarlier();
    void failureLeavesNothingBound_data();
    void failureLeavesNothingBound();
    void handlerMayRebindItself();
    void withoutRegistrarNothingHappens();
};

void HotkeyManagerTest::laterCombinationReplacesEarlier()
{
    ScriptedHotkeyRegistrar registrar;
    QStringList pressed;
    {
        HotkeyManager manager(&registrar);
        manager.unregister();
        manager.registerHotkey(46, 0x1800, [&] { pressed << QStringLiteral("M"); });
        registrar.press();
        manager.registerHotkey(96, 0x300, [&] { pressed << QStringLiteral("F5"); });
        registrar.press();
        QCOMPARE(pressed, QStringList({QStringLiteral("M"), QStringLiteral("F5")}));
        QCOMPARE(registrar.calls,
                 QStringList({installCall, registerMCall, unregisterCall, removeCall, installCall,
                              registerF5Call}));
        registrar.calls.clear();
    }
    QCOMPARE(registrar.calls, QStringList({unregisterCall, removeCall}));
}

void HotkeyManagerTest::failureLeavesNothingBound_data()
{
    QTest::addColumn<bool>("installs");
    QTest::addColumn<bool>("registers");
    QTest::addColumn<QStringList>("calls");

    const QStringList replaced{installCall, registerMCall, unregisterCall, removeCall};
    QTest::newRow("no handler") << false << true << replaced + QStringList{installCall};
    QTest::newRow("no key") << true << false
                            << replaced + QStringList{installCall, registerF5Call, removeCall};
    QTest::newRow("neither") << false << false << replaced + QStringList{installCall};
}

void HotkeyManagerTest::failureLeavesNothingBound()
{
    QFETCH(const bool, installs);
    QFETCH(const bool, registers);
    ScriptedHotkeyRegistrar registrar;
    int presses = 0;
    HotkeyManager manager(&registrar);
    manager.registerHotkey(46, 0x1800, [&] { ++presses; });

    registrar.installs = installs;
    registrar.registers = registers;
    manager.registerHotkey(96, 0x300, [&] { ++presses; });
    QTEST(registrar.calls, "calls");
    registrar.press();
    QCOMPARE(presses, 0);

    // There is nothing to take back, and the next attempt starts afresh.
    registrar.calls.clear();
    manager.unregister();
    registrar.installs = registrar.registers = true;
    manager.registerHotkey(46, 0x1800, [&] { ++presses; });
    QCOMPARE(registrar.calls, QStringList({installCall, registerMCall}));
    registrar.press();
    QCOMPARE(presses, 1);
}

void HotkeyManagerTest::handlerMayRebindItself()
{
    ScriptedHotkeyRegistrar registrar;
    HotkeyManager manager(&registrar);
    int presses = 0;
    manager.registerHotkey(46, 0x1800,
                           [&] { manager.registerHotkey(96, 0x300, [&] { ++presses; }); });
    registrar.press();
    registrar.press();
    QCOMPARE(presses, 1);
    QCOMPARE(registrar.calls.last(), registerF5Call);
}

void HotkeyManagerTest::withoutRegistrarNothingHappens()
{
    bool pressed = false;
    HotkeyManager manager(nullptr);
    manager.registerHotkey(46, 0x1800, [&] { pressed = true; });
    manager.unregister();
    QVERIFY(!pressed);
}

METERKIN_TEST(HotkeyManagerTest);
#include "HotkeyManagerTest.moc"
