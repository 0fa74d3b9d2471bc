#include "Support/TestMain.h"
#include "Views/Dashboard/CoreBarChart.h"
#include "Views/Dashboard/SparklineView.h"

#include <QtTest>

class ChartsTest : public QObject {
    Q_OBJECT

private slots:
    void placesThePointsOfASeries_data()
    {
        QTest::addColumn<QList<double>>("data");
        QTest::addColumn<QList<QPointF>>("points"); // in 100 x 30
        QTest::newRow("none") << QList<double>{} << QList<QPointF>{};
        QTest::newRow("one") << QList<double>{42} << QList<QPointF>{};
        QTest::newRow("flat") << QList<double>{5, 5, 5}
                              << QList<QPointF>{{0, 28}, {50, 28}, {100, 28}};
        QTest::newRow("full range") << QList<double>{0, 100} << QList<QPointF>{{0, 28}, {100, 2}};
        QTest::newRow("between") << QList<double>{30, 10, 20}
                                 << QList<QPointF>{{0, 2}, {50, 28}, {100, 15}};
    }
    void placesThePointsOfASeries()
    {
        QFETCH(QList<double>, data);
        QTEST(sparklinePoints(data, QSizeF(100, 30)), "points");
    }

    void sizesTheBars_data()
    {
        QTest::addColumn<QList<double>>("usage");
        QTest::addColumn<QList<QRectF>>("bars"); // in 276 x 40
        QTest::newRow("one, idle") << QList<double>{0} << QList<QRectF>{{0, 38, 276, 2}};
        QTest::newRow("two") << QList<double>{100, 50}
                             << QList<QRectF>{{0, 0, 137, 40}, {139, 20, 137, 20}};
        QTest::newRow("beyond the scale") << QList<double>{140} << QList<QRectF>{{0, 0, 276, 40}};
    }
    void sizesTheBars()
    {
        QFETCH(QList<double>, usage);
        QTEST(coreBars(usage, 276, 40), "bars");
    }

    void manyBarsNeitherVanishNorOverflow()
    {
        for (qsizetype count = 1; count <= 256; ++count) {
            const QList<QRectF> bars = coreBars(QList<double>(count, 50.0), 276, 40);
            QCOMPARE(bars.size(), count);
            QVERIFY(bars.first().width() >= 1.0);
            QVERIFY(std::abs(bars.last().right() - 276) < 1e-6);
            const double gap = count == 1 ? 2.0 : bars.at(1).left() - bars.at(0).right();
            QVERIFY2(count > 92 ? gap > 0.0 : std::abs(gap - 2.0) < 1e-6,
                     qPrintable(QString::number(count)));
        }
    }
};

METERKIN_TEST(ChartsTest);
#include "ChartsTest.moc"
