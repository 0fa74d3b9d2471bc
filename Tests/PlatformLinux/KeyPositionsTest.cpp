#include "Platform/Linux/KeyPositions.h"

#include "Services/HotkeyText.h"
#include "Support/TestMain.h"

#include <QtTest>

class KeyPositionsTest : public QObject {
    Q_OBJECT

private slots:
    void everyNamedKeyHasAPlace()
    {
        for (std::uint32_t code = 0; code < 128; ++code) {
            const std::optional<std::uint32_t> place = hardwareCode(code);
            QVERIFY2(place || keyName(code).startsWith(u"Key("), qPrintable(keyName(code)));
            QVERIFY2(!place || virtualKeyCode(*place) == code, qPrintable(keyName(code)));
            QVERIFY2(!place || virtualKeyCodeNamed(positionName(code)) == code,
                     qPrintable(keyName(code)));
        }
        QCOMPARE(virtualKeyCode(38), 0U); // left of S, whatever the layout prints there
        QCOMPARE(virtualKeyCode(113), 123U); // the left arrow
        QCOMPARE(virtualKeyCode(0), KeyDown::NoKeyCode); // made up by a program
        QCOMPARE(virtualKeyCode(255), KeyDown::NoKeyCode);
    }
};

METERKIN_TEST(KeyPositionsTest);
#include "KeyPositionsTest.moc"
