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
        using Bars = QList<QRect>;
        QCOMPARE(coreBars({0}, {276, 40}, 1.0), (Bars{{0, 38, 276, 2}}));
        QCOMPARE(coreBars({140, 50}, {276, 40}, 1.0), (Bars{{0, 0, 137, 40}, {139, 20, 137, 20}}));
        QCOMPARE(coreBars({0, 50}, {345, 50}, 1.25), (Bars{{0, 47, 171, 3}, {174, 25, 171, 25}}));
    }

    void manyBarsNeitherVanishNorOverflow()
    {
        for (const qsizetype count : {1, 2, 92, 93, 138, 256}) {
            const QList<QRect> bars = coreBars(QList<double>(count, 50.0), {276, 40}, 1.0);
            QCOMPARE(bars.size(), count);
            QCOMPARE(bars.last().x() + bars.last().width(), 276);
            for (qsizetype i = 1; i < count; ++i) {
                const int gap = bars.at(i).x() - bars.at(i - 1).x() - bars.at(i - 1).width();
                QVERIFY(bars.at(i).width() >= 1 && bars.at(i).width() - bars.first().width() <= 1);
                QVERIFY(count <= 92 ? gap == 2 : gap >= 0);
            }
        }
    }
};

METERKIN_TEST(ChartsTest);
#include "ChartsTest.moc"
