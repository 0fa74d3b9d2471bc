#include "Platform/Linux/Hotkey/KeyPositions.h"

#include "Platform/Linux/Hotkey/CombinationText.h"
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

    void namesKeys_data()
    {
        QTest::addColumn<quint32>("keysym"); // 0: what the American layout has at the key code
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("trigger");
        const auto row = [](quint32 keysym, quint32 keyCode, const char *text,
                            const char *trigger) {
            QTest::newRow(text) << keysym << keyCode << QString::fromUtf8(text)
                                << QString::fromLatin1(trigger);
        };
        row(0, 40, "K", "k");
        row(0, 123, "Left", "Left");
        row(0, 53, "Esc", "Escape");
        row(0, 49, "Space", "space");
        row(0, 36, "Return", "Return");
        row(0, 96, "F5", "F5");
        row(0, 50, "`", "grave");
        row(0, 91, "Keypad 8", "KP_8");
        row(0, 69, "Keypad +", "KP_Add");
        row(0, 76, "Keypad Enter", "KP_Enter");
        row(0, 72, "Volume Up", "XF86AudioRaiseVolume");
        row(0, 52, "Key(52)", "");
        row(0xf6, 41, "Ö", "odiaeresis");
        row(0xdf, 27, "ß", "ssharp");
        row(0xfe51, 24, "´", "dead_acute");
        row(0x6d8, 46, "Ь", "Cyrillic_softsign");
    }
    void namesKeys()
    {
        QFETCH(const quint32, keysym);
        QFETCH(const quint32, keyCode);
        QFETCH(const QString, text);
        QFETCH(const QString, trigger);
        const HotkeyCombination combination{keyCode, 0x1b00};
        const quint32 symbol = keysym != 0 ? keysym : ansiKeysym(keyCode);
        QCOMPARE(combinationText(combination, symbol),
                 QStringLiteral("Super+Ctrl+Alt+Shift+") + text);
        QCOMPARE(shortcutTrigger(combination, symbol),
                 trigger.isEmpty() ? trigger : QStringLiteral("LOGO+CTRL+ALT+SHIFT+") + trigger);
    }
};

METERKIN_TEST(KeyPositionsTest);
#include "KeyPositionsTest.moc"
