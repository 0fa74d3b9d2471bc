#include "Platform/macOS/FoundationValues.h"
#include "Platform/macOS/PropertyList.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <limits>

class FoundationValuesTest : public QObject {
    Q_OBJECT

private slots:
    void carriesTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("beyond ASCII") << QStringLiteral("⇧⌘ Größe");
        QTest::newRow("beyond 16 bits") << QStringLiteral("𝔐");
        QTest::newRow("with a null") << QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    }
    void carriesTexts()
    {
        QFETCH(QString, text);
        QCOMPARE(textOf(foundationText(text)), text);
    }

    void carriesValues_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("back");
        const auto same = [](const char *name, const QVariant &value) {
            QTest::newRow(name) << value << value;
        };
        const auto integer = [](const char *name, const QVariant &value, qlonglong back) {
            QTest::newRow(name) << value << QVariant::fromValue(back);
        };
        same("text", QStringLiteral("1"));
        same("true", true);
        same("false", false);
        same("decimals", 0.1);
        same("whole", 3.0);
        integer("one, which is not true", 1, 1);
        integer("nought, which is not false", 0, 0);
        integer("smallest", std::numeric_limits<qlonglong>::min(),
                std::numeric_limits<qlonglong>::min());
        integer("unsigned", 4'294'967'295U, 4'294'967'295);
        QTest::newRow("neither") << QVariant(QByteArray("data")) << QVariant();
        same("nothing", QVariant());
    }
    void carriesValues()
    {
        QFETCH(const QVariant, value);
        QFETCH(const QVariant, back);
        const QVariant carried = valueOf(foundationValue(value));
        QCOMPARE(carried.typeId(), back.typeId());
        QCOMPARE(carried, back);
    }

    void readsPropertyLists_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char *name, const char *content, const QVariant &value) {
            QTest::newRow(name) << QByteArray("<?xml version=\"1.0\"?><plist>") + content
                    + QByteArray("</plist>")
                                << value;
        };
        row("nested",
            "<dict><key>a</key><array><true/><integer>7</integer><data>AAAA</data></array>"
            "<key>ü</key><dict><key>c</key><real>0.5</real></dict></dict>",
            QVariantMap{
                {QStringLiteral("a"), QVariantList{true, 7LL, QVariant()}},
                {QStringLiteral("ü"), QVariantMap{{QStringLiteral("c"), 0.5}}},
            });
        row("a text", "<string>x</string>", QStringLiteral("x"));
        row("cut off", "<dict><key>a</key>", QVariant());
        QTest::newRow("empty") << QByteArray() << QVariant();
        QTest::newRow("binary, cut off") << QByteArray("bplist00\xd1\x01") << QVariant();
    }
    void readsPropertyLists()
    {
        QFETCH(const QByteArray, data);
        QTEST(propertyList(data), "value");
    }
};

METERKIN_TEST(FoundationValuesTest);
#include "FoundationValuesTest.moc"
