#include "Services/HotkeyManager.h"
#include "Support/ScriptedServices.h"
#include "Support/TestMain.h"

#include <QtTest>

class HotkeyManagerTest : public QObject {
    Q_OBJECT

private slots:
    // One combination after another; the registrar may fail at the second.
    void laterCombinationReplacesEarlier_data()
    {
        QTest::addColumn<bool>("installs");
        QTest::addColumn<bool>("registers");
        QTest::addColumn<QString>("calls");
        const QString replaced = QStringLiteral("unregister, remove, install");
        const QString bound = replaced + QStringLiteral(", register 96+0x300 as MKHT 1");
        QTest::newRow("works") << true << true << bound;
        QTest::newRow("no handler") << false << true << replaced;
        QTest::newRow("no key") << true << false << bound + QStringLiteral(", remove");
    }
    void laterCombinationReplacesEarlier()
    {
        QFETCH(const bool, installs);
        QFETCH(const bool, registers);
        const bool works = installs && registers;
        ScriptedHotkeyRegistrar registrar;
        const auto calls = [&] { return std::exchange(registrar.calls, {}).join(u", "); };
        QString pressed;
        {
            HotkeyManager manager(&registrar);
            manager.unregister();
            manager.registerHotkey(46, 0x1800, [&] { pressed += u'M'; });
            QCOMPARE(calls(), QStringLiteral("install, register 46+0x1800 as MKHT 1"));
            registrar.press();

            registrar.installs = installs;
            registrar.registers = registers;
            manager.registerHotkey(96, 0x300, [&] { pressed += u'F'; });
            QTEST(calls(), "calls");
            registrar.press();
            QCOMPARE(pressed, works ? QStringLiteral("MF") : QStringLiteral("M"));
        }
        QCOMPARE(calls(), works ? QStringLiteral("unregister, remove") : QString());
    }

    void handlerMayRebindItself()
    {
        ScriptedHotkeyRegistrar registrar;
        HotkeyManager manager(&registrar);
        int presses = 0;
        manager.registerHotkey(46, 0x1800,
                               [&] { manager.registerHotkey(96, 0x300, [&] { ++presses; }); });
        registrar.press();
        registrar.press();
        QCOMPARE(presses, 1);
    }
};

METERKIN_TEST(HotkeyManagerTest);
#include "HotkeyManagerTest.moc"
