#include "Services/HotkeyText.h"
#include "Support/TestMain.h"

#include <QtTest>

class HotkeyTextTest : public QObject {
    Q_OBJECT

private slots:
    void showsWhatThePressStored_data()
    {
        QTest::addColumn<quint32>("keyCode");
        QTest::addColumn<quint32>("flags");
        QTest::addColumn<quint32>("modifiers");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *text, quint32 keyCode, quint32 flags, quint32 modifiers) {
            QTest::newRow(text) << keyCode << flags << modifiers << QString::fromUtf8(text);
        };
        row("^⌥M", 46, 0xC0000, 0x1800);
        row("⇧⌘F5", 96, 0x120000, 0x300);
        row("^⌥⇧⌘A", 0, 0x1E0000, 0x1B00);
        row("⌘Key(123)", 123, 0x100000, 0x100);
        row("⌘Return", 36, 0x100000, 0x100);
        row("⌘Key(10)", 10, 0x100000, 0x100); // between the letters, without a name
        row("⌘F1", 122, 0x110000, 0x100); // caps lock
        row("⌥Key(83)", 83, 0xFFA8FFFF, 0x800); // every flag that is no modifier
        row("Key(4294967295)", 0xFFFFFFFF, 0xFFFF, 0);
    }
    void showsWhatThePressStored()
    {
        QFETCH(const quint32, keyCode);
        QFETCH(const quint32, flags);
        QTEST(carbonModifiers(flags), "modifiers");
        QTEST(modifierSymbols(carbonModifiers(flags)) + keyName(keyCode), "text");
    }

    void ignoresForeignBits() { QCOMPARE(modifierSymbols(~0x1B00U), QString()); }
};

METERKIN_TEST(HotkeyTextTest);
#include "HotkeyTextTest.moc"
