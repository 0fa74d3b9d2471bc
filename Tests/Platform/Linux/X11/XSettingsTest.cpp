#include "Platform/Linux/X11/XSettings.h"
#include "Support/TestMain.h"

#include <QtTest>

class XSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void readsOnlySoundBlocks()
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
                    == (XSettingsValues{QStringLiteral("Arc-Dark"), block == big}));
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

METERKIN_TEST(XSettingsTest);
#include "XSettingsTest.moc"
