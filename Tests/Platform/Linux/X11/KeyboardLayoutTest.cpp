#include "Platform/HotkeyRegistrar.h"
#include "Platform/KeyDownMonitor.h"
#include "Platform/Linux/X11/KeyNames.h"
#include "Platform/Linux/X11/ModifierBits.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

constexpr quint32 Num = 0xff7f, Scroll = 0xff14, Alt = 0xffe9, AltRight = 0xffea, Meta = 0xffe7,
                  Super = 0xffeb, SuperRight = 0xffec;

using Keys = QList<X11ModifierKey>;

} // namespace

/// What is made of a server's answers.
class X11KeyboardLayoutTest : public QObject {
    Q_OBJECT

private slots:
    void findsModifiers_data()
    {
        QTest::addColumn<Keys>("keys");
        QTest::addColumn<QList<int>>("masks"); // all four, control and option, command; -1 for none
        QTest::addColumn<QList<quint16>>("locks"); // when control and option are wanted
        const auto row = [](const char *name, const Keys &keys, const QList<int> &masks,
                            const QList<quint16> &locks) {
            QTest::newRow(name) << keys << masks << locks;
        };
        row("usual", {{3, Alt}, {3, Meta}, {3, AltRight}, {4, Num}, {6, SuperRight}, {6, Super}},
            {0x4d, 0x0c, 0x40}, {0x12, 0x10, 0x02, 0});
        row("others", {{7, Alt}, {3, Num}, {4, Scroll}, {5, Super}}, {0xa5, 0x84, 0x20},
            {0x1a, 0x18, 0x12, 0x10, 0x0a, 0x08, 0x02, 0});
        row("shared", {{3, Alt}, {3, Num}, {3, Super}, {4, Scroll}}, {0x0d, 0x0c, 0x08},
            {0x12, 0x10, 0x02, 0});
        row("both locks on one", {{5, Scroll}, {5, Num}, {3, Alt}}, {-1, 0x0c, -1},
            {0x22, 0x20, 0x02, 0});
        row("several bits", {{6, Alt}, {3, AltRight}, {7, SuperRight}, {4, Super}},
            {0x1d, 0x0c, 0x10}, {0x02, 0});
        row("only where they mean something else", {{2, Alt}, {1, Super}, {0, Num}}, {-1, -1, -1},
            {0x02, 0});
        row("none", {}, {-1, -1, -1}, {0x02, 0});
    }
    void findsModifiers()
    {
        using namespace CarbonModifier;
        QFETCH(const Keys, keys);
        const X11ModifierBits bits = x11ModifierBits(keys);
        QList<int> masks;
        for (const quint32 wanted : {0x1b00U, control | option, command})
            masks += bits.mask(wanted) ? *bits.mask(wanted) : -1;
        QTEST(masks, "masks");
        const int taken = bits.mask(control | option).value_or(0);
        QTEST(lockCombinations(static_cast<quint16>(bits.locks & ~taken)), "locks");
        QCOMPARE(bits.mask(~0x1b00U), 0); // bits that are never stored
    }

    void findsKeys()
    {
        const X11KeyNames names{20, QByteArrayLiteral("ESC\0AC01FK05\0\0\0\0UP\0\0AD0")};
        QCOMPARE(names.keyCode(53), 20U);
        QCOMPARE(names.keyCode(0), 21U);
        QCOMPARE(names.keyCode(126), 24U);
        for (const quint32 absent : {46U, 12U, 200U, 255U, ~0U})
            QVERIFY2(!names.keyCode(absent), qPrintable(QString::number(absent)));
        QCOMPARE(names.virtualKeyCode(22), 96U);
        for (const quint32 absent : {0U, 19U, 23U, 25U, ~0U})
            QCOMPARE(names.virtualKeyCode(absent), KeyDown::NoKeyCode);
        QCOMPARE(X11KeyNames().keyCode(0), 38U); // as evdev has it
        QCOMPARE(X11KeyNames().virtualKeyCode(38), 0U);
    }
};

METERKIN_TEST(X11KeyboardLayoutTest);
#include "KeyboardLayoutTest.moc"
