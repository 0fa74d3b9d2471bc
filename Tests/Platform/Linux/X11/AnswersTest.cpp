#include "Platform/HotkeyRegistrar.h"
#include "Platform/Linux/Hotkey/X11/ModifierBits.h"
#include "Platform/Linux/X11/XSettings.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <tuple>

/// What X servers and the programs on them tell of a desktop.
class X11AnswersTest : public QObject {
    Q_OBJECT

private slots:
    void findsTheModifiersOfAServer()
    {
        using Keys = QList<X11ModifierKey>;
        constexpr quint32 num = 0xff7f, alt = 0xffe9, altRight = 0xffea, super = 0xffeb,
                          superRight = 0xffec;
        // The masks of all four and of command, and the locks when all but command are wanted.
        for (const auto &[keys, all, command, locks] :
             {std::tuple(Keys{{3, alt}, {3, altRight}, {4, num}, {6, superRight}, {6, super}}, 0x4d,
                         0x40, QList<quint16>{0x12, 0x10, 0x02, 0}),
              {{{6, alt}, {3, altRight}, {7, superRight}, {4, super}}, 0x1d, 0x10, {0x02, 0}},
              {{{2, alt}, {1, super}, {0, num}}, -1, -1, {0x02, 0}}}) { // of fixed meaning
            const X11ModifierBits bits = x11ModifierBits(keys);
            const auto mask = [&](quint32 wanted) {
                return bits.mask(wanted) ? int{*bits.mask(wanted)} : -1;
            };
            QCOMPARE(mask(0x1b00), all);
            QCOMPARE(mask(CarbonModifier::command), command);
            QCOMPARE(lockCombinations(quint16(bits.locks & ~std::max(0, mask(0x1a00)))), locks);
        }
    }

    void readsOnlySoundSettings()
    {
        const auto little =
            QByteArrayLiteral("\0\0\0\0\7\0\0\0\5\0\0\0"
                              "\0\0\7\0Xft/DPI\0\1\0\0\0\0\200\1\0"
                              "\2\0\12\0Net/Colors\0\0\1\0\0\0\0\0\0\0\0\0\0\0"
                              "\1\0\15\0Net/ThemeName\0\0\0\1\0\0\0\10\0\0\0Arc-Dark"
                              "\1\0\10\0Net/Icon\1\0\0\0\3\0\0\0Elm\0"
                              "\0\0\24\0Gtk/EnableAnimations\0\0\0\0\0\0\0\0");
        const auto big = QByteArrayLiteral("\1\0\0\0\0\0\0\7\0\0\0\1"
                                           "\1\0\0\15Net/ThemeName\0\0\0\0\0\0\1\0\0\0\10Arc-Dark");
        for (const QByteArray &block : {little, big}) {
            QVERIFY(xsettingsValues(block)
                    == (ThemeSettings{QStringLiteral("Arc-Dark"), block == big}));
            for (qsizetype size = 0; size < block.size(); ++size)
                QVERIFY(!xsettingsValues(block.first(size)));
        }
        // Offset and byte: orders, counts, types and lengths that are wrong or too large.
        for (const int damage : {0x0002, 0x0806, 0x0bff, 0x0c03, 0x0e00, 0x5409, 0x577f, 0x7005}) {
            QByteArray block = little;
            block[damage >> 8] = static_cast<char>(damage & 0xff);
            QVERIFY2(!xsettingsValues(block), qPrintable(QString::number(damage)));
        }
    }
};

METERKIN_TEST(X11AnswersTest);
#include "AnswersTest.moc"
