#include "TierColors.h"
#include "Support/Contrast.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <cmath>
#include <limits>

class TierColorsTest : public QObject {
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
        for (const ThresholdTier tier :
             {ThresholdTier::green, ThresholdTier::yellow, ThresholdTier::red})
            QVERIFY2(contrast(tierColor(tier), panel) >= 3.0,
                     qPrintable(QString::number(contrast(tierColor(tier), panel))));
    }

    void blends_data()
    {
        constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
        constexpr double Infinity = std::numeric_limits<double>::infinity();
        const QColor from(0, 100, 200, 255);
        const QColor to(200, 0, 100, 55);
        QTest::addColumn<QColor>("from");
        QTest::addColumn<QColor>("to");
        QTest::addColumn<double>("fraction");
        QTest::addColumn<QColor>("expected");
        QTest::newRow("start") << from << to << 0.0 << from;
        QTest::newRow("quarter") << from << to << 0.25 << QColor(50, 75, 175, 205);
        QTest::newRow("end") << from << to << 1.0 << to;
        QTest::newRow("before the start") << from << to << -0.5 << from;
        QTest::newRow("past the end") << from << to << 7.0 << to;
        QTest::newRow("not a number") << from << to << NaN << from;
        QTest::newRow("infinite") << from << to << Infinity << to;
        QTest::newRow("unconvertible start") << QColor() << to << 0.0 << to;
        QTest::newRow("unconvertible end") << from << QColor() << 0.3 << QColor();
        QTest::newRow("other colour space")
            << QColor::fromHsv(0, 0, 0) << QColor(200, 100, 50) << 0.5 << QColor(100, 50, 25);
    }
    void blends()
    {
        QFETCH(QColor, from);
        QFETCH(QColor, to);
        QFETCH(double, fraction);
        QFETCH(QColor, expected);
        const QColor blended = interpolateColor(from, to, fraction);
        QCOMPARE(blended.isValid(), expected.isValid());
        if (expected.isValid())
            QCOMPARE(blended.rgba(), expected.rgba());
    }
};

METERKIN_TEST(TierColorsTest);
#include "TierColorsTest.moc"
