#include "Platform/Linux/PanelColors.h"
#include "Support/Contrast.h"
#include "Support/TestMain.h"

#include <QtTest>

class PanelColorsTest : public QObject {
    Q_OBJECT

private slots:
    void keepsContrastOnPanels_data()
    {
        QTest::addColumn<QColor>("panel");
        QTest::newRow("white") << QColor(0xff, 0xff, 0xff);
        QTest::newRow("light grey") << QColor(0xf6, 0xf5, 0xf4);
        QTest::newRow("dark grey") << QColor(0x30, 0x30, 0x30);
        QTest::newRow("black") << QColor(0, 0, 0);
    }
    void keepsContrastOnPanels()
    {
        QFETCH(QColor, panel);
        for (const SystemColor color : {SystemColor::Green, SystemColor::Yellow, SystemColor::Red})
            QVERIFY2(contrast(panelColor(color), panel) >= 3.0,
                     qPrintable(QString::number(contrast(panelColor(color), panel))));
    }
};

METERKIN_TEST(PanelColorsTest);
#include "PanelColorsTest.moc"
