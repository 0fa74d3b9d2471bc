#include "Platform/macOS/FoundationValues.h"
#include "Support/TestMain.h"

#include <QtTest>

class FoundationValuesTest : public QObject {
    Q_OBJECT

private slots:
    void carriesTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("beyond ASCII") << QStringLiteral("⇧⌘ Größe");
        QTest::newRow("beyond 16 bits") << QStringLiteral("𝔐");
    }
    void carriesTexts()
    {
        QFETCH(QString, text);
        QCOMPARE(textOf(foundationText(text)), text);
    }
};

METERKIN_TEST(FoundationValuesTest);
#include "FoundationValuesTest.moc"
