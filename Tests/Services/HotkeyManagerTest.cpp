#include "Services/HotkeyManager.h"
#include "Support/ScriptedServices.h"
#include "Support/TestMain.h"

#include <QtTest>

class HotkeyManagerTest : public QObject {
    Q_OBJECT

private slots:
    void bindsUntilItEnds()
    {
        ScriptedHotkeyRegistrar registrar;
        int presses = 0;
        {
            HotkeyManager manager(registrar);
            manager.registerHotkey(46, 0x1800, [&] { ++presses; });
            QCOMPARE(registrar.calls, QStringList{QStringLiteral("bind 46+0x1800")});
            registrar.press();
        }
        registrar.press();
        QCOMPARE(presses, 1);
    }
};

METERKIN_TEST(HotkeyManagerTest);
#include "HotkeyManagerTest.moc"
