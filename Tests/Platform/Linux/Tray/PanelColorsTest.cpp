#include "Platform/Linux/Tray/PanelColors.h"
#include "Support/Contrast.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <algorithm>

class PanelColorsTest : public QObject {
    Q_OBJECT

private slots:
    void keepsContrastOnPanels()
    {
        const QColor light(0xf6, 0xf5, 0xf4); // harder to keep than on white and black
        const QColor dark(0x30, 0x30, 0x30);
        for (const SystemColor color : {SystemColor::Green, SystemColor::Yellow, SystemColor::Red})
            QVERIFY(std::min(contrast(panelColor(color), light), contrast(panelColor(color), dark))
                    >= 3.0);
    }
};

METERKIN_TEST(PanelColorsTest);
#include "PanelColorsTest.moc"
