#include "Support/ScriptedDashboard.h"
#include "Support/TestMain.h"

#include <QtTest>

/// What the dashboard makes of the readings.
class DashboardViewModelTest : public QObject {
    Q_OBJECT

private slots:
    void firstFanCounts()
    {
        ScriptedDashboard machine;
        const DashboardViewModel &dashboard = machine.dashboard();
        const QProperty<QString> bound(
            [&] { return dashboard.displayText(SystemMetric::FanSpeed); });
        machine.report({.fanSpeed = 1200.0, .fans = 2});
        QCOMPARE(bound.value(), QStringLiteral("1200 RPM"));
        QCOMPARE(dashboard.fanCount(), 2);
        QVERIFY(dashboard.isPresent(SystemMetric::FanSpeed));
        machine.report({.memory = 25.0}); // leaves history and extremes as they were
        QCOMPARE(dashboard.fanCount(), 0);
        QCOMPARE(bound.value(), QStringLiteral("N/A"));
        QCOMPARE(dashboard.fanSpeedHistory(), QList<double>{1200.0});
        QCOMPARE(dashboard.fanSpeedLow(), std::optional(1200.0));
        QCOMPARE(dashboard.memoryHistory(), QList<double>{25.0});
    }

    void keepsTheLastSixty()
    {
        ScriptedDashboard machine;
        const DashboardViewModel &dashboard = machine.dashboard();
        QList<double> expected;
        for (int percent = 1; percent <= 61; ++percent) {
            machine.report({.memory = percent});
            expected.append(*dashboard.currentValue(SystemMetric::MemoryUsage));
        }
        QCOMPARE(dashboard.memoryHistory(), expected.sliced(1));
        for (int i = 0; i < 500; ++i)
            machine.report({.memory = 20.0 + i % 2});
        QCOMPARE(dashboard.memoryHistory().capacity(), DashboardViewModel::HistoryLength);
        QCOMPARE(dashboard.memoryLow(), std::optional(1.0)); // of the run, not of the list
        QCOMPARE(dashboard.memoryHigh(), std::optional(61.0));
    }
};

METERKIN_TEST(DashboardViewModelTest);
#include "DashboardViewModelTest.moc"
