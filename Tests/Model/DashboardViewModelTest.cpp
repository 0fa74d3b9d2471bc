#include "Support/ScriptedDashboard.h"
#include "Support/TestMain.h"

#include <QtTest>

/// What the dashboard makes of the readings.
class DashboardViewModelTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_machine = std::make_unique<ScriptedDashboard>();
        m_dashboard = &m_machine->dashboard();
    }

    void isEmptyWithoutReadings()
    {
        for (const bool isUpdated : {false, true}) {
            if (isUpdated)
                m_machine->report({});
            for (const SystemMetric metric : allMetrics) {
                QCOMPARE(m_dashboard->displayText(metric), QStringLiteral("N/A"));
                QVERIFY(m_dashboard->record(metric) == MetricRecord());
                QCOMPARE(m_dashboard->isPresent(metric), metric != SystemMetric::FanSpeed);
            }
        }
        QCOMPARE(MemoryInfo().usagePercent(), 0.0); // of no memory
    }

    void firstFanCounts()
    {
        const QProperty<QString> bound(
            [&] { return m_dashboard->displayText(SystemMetric::FanSpeed); });
        m_machine->report({.fanSpeed = 1200.0, .fans = 2});
        QCOMPARE(bound.value(), QStringLiteral("1200 RPM"));
        QCOMPARE(m_dashboard->fanCount(), 2);
        QVERIFY(m_dashboard->isPresent(SystemMetric::FanSpeed));
        m_machine->report({.memory = 25.0}); // leaves history and extremes as they were
        QCOMPARE(m_dashboard->fanCount(), 0);
        QCOMPARE(bound.value(), QStringLiteral("N/A"));
        QCOMPARE(m_dashboard->fanSpeedHistory(), QList<double>{1200.0});
        QCOMPARE(m_dashboard->fanSpeedLow(), std::optional(1200.0));
        QCOMPARE(m_dashboard->memoryHistory(), QList<double>{25.0});
    }

    void keepsTheLastSixty()
    {
        QList<double> expected;
        for (int percent = 1; percent <= 61; ++percent) {
            m_machine->report({.memory = percent});
            expected.append(*m_dashboard->currentValue(SystemMetric::MemoryUsage));
        }
        QCOMPARE(m_dashboard->memoryHistory(), expected.sliced(1));
        for (int i = 0; i < 500; ++i)
            m_machine->report({.memory = 20.0 + i % 2});
        QCOMPARE(m_dashboard->memoryHistory().capacity(), DashboardViewModel::HistoryLength);
        QCOMPARE(m_dashboard->memoryLow(), std::optional(1.0)); // of the run, not of the list
        QCOMPARE(m_dashboard->memoryHigh(), std::optional(61.0));
    }

private:
    std::unique_ptr<ScriptedDashboard> m_machine;
    DashboardViewModel *m_dashboard = nullptr;
};

METERKIN_TEST(DashboardViewModelTest);
#include "DashboardViewModelTest.moc"
