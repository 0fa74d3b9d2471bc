#include "Support/TestMain.h"
#include "Views/Dashboard/CoreBarChart.h"
#include "Views/Dashboard/SparklineView.h"

#include <QtTest>

class ChartsTest : public QObject {
    Q_OBJECT

private slots:
    void placesThePointsOfASeries()
    {
        const QSizeF size(100, 30);
        using Points = QList<QPointF>;
        QCOMPARE(sparklinePoints({}, size), Points());
        QCOMPARE(sparklinePoints({42}, size), Points());
        QCOMPARE(sparklinePoints({5, 5, 5}, size), (Points{{0, 28}, {50, 28}, {100, 28}}));
        QCOMPARE(sparklinePoints({30, 10, 20}, size), (Points{{0, 2}, {50, 28}, {100, 15}}));
    }

    void sizesTheBars()
    {
        using Bars = QList<QRectF>;
        QCOMPARE(coreBars({0}, 276, 40), (Bars{{0, 38, 276, 2}}));
        QCOMPARE(coreBars({140, 50}, 276, 40), (Bars{{0, 0, 137, 40}, {139, 20, 137, 20}}));
    }

    void manyBarsNeitherVanishNorOverflow()
    {
        for (const qsizetype count : {1, 2, 92, 93, 256}) {
            const QList<QRectF> bars = coreBars(QList<double>(count, 50.0), 276, 40);
            QCOMPARE(bars.size(), count);
            QVERIFY(bars.first().width() >= 1.0);
            QVERIFY(std::abs(bars.last().right() - 276) < 1e-6);
            const double gap = count == 1 ? 2.0 : bars.at(1).left() - bars.at(0).right();
            QVERIFY(count > 92 ? gap > 0.0 : std::abs(gap - 2.0) < 1e-6);
        }
    }
};

METERKIN_TEST(ChartsTest);
#include "ChartsTest.moc"
