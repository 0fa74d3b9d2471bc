#include "Platform/ReopenGuard.h"
#include "Support/TestMain.h"

#include <QtTest>

class ReopenGuardTest : public QObject {
    Q_OBJECT

private slots:
    void closingClickDoesNotReopen_data()
    {
        QTest::addColumn<QPoint>("press"); // null: not known
        QTest::addColumn<int>("releasedAt"); // -1: still down
        QTest::addColumn<int>("shownAt");
        QTest::addColumn<QRect>("item");
        QTest::addColumn<bool>("swallowed");
        const QRect item(100, 0, 60, 24);
        const QRect clicked(118, 9, 2, 2); // what a panel on the bus tells
        const QPoint inside(120, 10);
        QTest::newRow("click on the item") << inside << 90 << 100 << item << true;
        QTest::newRow("reported late") << inside << 90 << 480 << clicked << true;
        QTest::newRow("long press") << inside << -1 << 2000 << item << true;
        QTest::newRow("release unseen") << inside << -1 << 9000 << item << false;
        QTest::newRow("next click") << inside << 90 << 500 << item << false;
        QTest::newRow("hot key after another click") << QPoint(9, 300) << 90 << 99 << item << false;
        QTest::newRow("item unknown") << inside << 90 << 100 << QRect() << true;
        QTest::newRow("place unknown") << QPoint() << -1 << 390 << item << true;
        QTest::newRow("place unknown, later") << QPoint() << -1 << 410 << item << false;
    }
    void closingClickDoesNotReopen()
    {
        QFETCH(QPoint, press);
        QFETCH(int, releasedAt);
        QFETCH(int, shownAt);
        QFETCH(QRect, item);
        ReopenGuard guard;
        guard.closedByPress(press.isNull() ? std::nullopt : std::optional(press), 0);
        if (releasedAt >= 0)
            guard.released(releasedAt);
        QTEST(guard.swallows(item, shownAt), "swallowed");
        QVERIFY(!guard.swallows(item, shownAt)); // once for each press
    }
};

METERKIN_TEST(ReopenGuardTest);
#include "ReopenGuardTest.moc"
