#include "InterpolateColor.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <limits>

class InterpolateColorTest : public QObject {
    Q_OBJECT

private slots:
    void blends_data()
    {
        constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
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
        QTest::newRow("not a number") << from << to << NaN << from;
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

METERKIN_TEST(InterpolateColorTest);
#include "InterpolateColorTest.moc"
