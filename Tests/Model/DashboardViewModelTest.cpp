#include "Model/DashboardViewModel.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QEventLoop>
#include <QSignalSpy>
#include <QtTest>

using OptionalDouble = std::optional<double>;

namespace {

/// A dashboard over a collector over a machine that reports what the test says.
class Bench {
public:
    explicit Bench(std::uint64_t physicalMemory = 64)
        : m_collector(ScriptedMachine{ticks, pages, fans, physicalMemory}.makeCollector())
        , dashboard(*m_collector)
    {
    }

    /// Fans with the given speeds, in quarters of an RPM as the controller tells them.
    void setFans(const std::vector<std::uint16_t> &quarters)
    {
        std::map<std::string, ScriptedKey> keys;
        keys["FNum"] = {"ui8 ", {static_cast<std::uint8_t>(quarters.size())}, 1};
        for (std::size_t fan = 0; fan < quarters.size(); ++fan)
            keys["F" + std::to_string(fan) + "Ac"] = {
                "fpe2",
                {static_cast<std::uint8_t>(quarters[fan] >> 8),
                 static_cast<std::uint8_t>(quarters[fan])},
                2};
        fans->set(keys);
    }
    /// Of the physical memory, in bytes.
    void setUsedMemory(std::uint64_t bytes)
    {
        pages->set(PageCounts{.pageSize = 1, .active = bytes, .inactive = 7, .free = 9});
    }
    /// Lets one core be busy for so many of the next 100 ticks.
    void addBusyTicks(std::uint64_t busy)
    {
        m_sum.user += busy;
        m_sum.idle += 100 - busy;
        ticks->set(Cores{{0, m_sum}});
    }

    void sample()
    {
        QEventLoop sampled;
        m_collector->onTick = [&sampled] { sampled.quit(); };
        m_collector->start(86400.0);
        sampled.exec();
        dashboard.update();
    }

    std::shared_ptr<TicksScript> ticks = std::make_shared<TicksScript>();
    std::shared_ptr<PagesScript> pages = std::make_shared<PagesScript>();
    std::shared_ptr<FansScript> fans = makeController();

private:
    /// It must be there from the start; its fans may come later.
    static std::shared_ptr<FansScript> makeController()
    {
        auto controller = std::make_shared<FansScript>();
        controller->set(FanKeys::value_type());
        return controller;
    }

    CoreTicks m_sum;
    std::unique_ptr<MetricCollector> m_collector;

public:
    DashboardViewModel dashboard;
};

} // namespace

/// What the dashboard makes of the readings.
class DashboardViewModelTest : public QObject {
    Q_OBJECT

private slots:
    void isEmptyAtFirst()
    {
        Bench bench;
        for (const bool isUpdated : {false, true}) {
            if (isUpdated)
                bench.sample(); // of a machine that tells nothing
            for (const SystemMetric metric : allMetrics) {
                QCOMPARE(bench.dashboard.currentValue(metric), std::nullopt);
                QCOMPARE(bench.dashboard.displayText(metric), QStringLiteral("N/A"));
            }
            QVERIFY(bench.dashboard.fanSpeedHistory().isEmpty()
                    && bench.dashboard.memoryHistory().isEmpty()
                    && bench.dashboard.cpuUsageHistory().isEmpty());
            QVERIFY(!bench.dashboard.fanSpeedHigh() && !bench.dashboard.memoryLow());
            QCOMPARE(bench.dashboard.fanCount(), 0);
        }
    }

    void firstFanCounts()
    {
        Bench bench;
        bench.setFans({1200 * 4, 1500 * 4});
        bench.sample();
        const DashboardViewModel &dashboard = bench.dashboard;
        QCOMPARE(dashboard.fanSpeeds().size(), 2);
        QCOMPARE(dashboard.fanCount(), 2);
        QCOMPARE(dashboard.fanSpeedHistory(), QList<double>{1200.0});
        QCOMPARE(dashboard.fanSpeedHigh(), OptionalDouble(1200.0));
        QCOMPARE(dashboard.fanSpeedLow(), OptionalDouble(1200.0));
        QCOMPARE(dashboard.displayText(SystemMetric::fanSpeed), QStringLiteral("1200 RPM"));
        QVERIFY(dashboard.memoryHistory().isEmpty());

        // Fans that are gone leave history and extremes as they were.
        bench.setFans({});
        bench.setUsedMemory(16);
        bench.sample();
        QCOMPARE(dashboard.fanCount(), 0);
        QCOMPARE(dashboard.displayText(SystemMetric::fanSpeed), QStringLiteral("N/A"));
        QCOMPARE(dashboard.fanSpeedHistory(), QList<double>{1200.0});
        QCOMPARE(dashboard.fanSpeedLow(), OptionalDouble(1200.0));
        QCOMPARE(dashboard.memoryHistory(), QList<double>{25.0});
    }

    void keepsTheLastSixty()
    {
        Bench bench;
        QList<double> expected;
        for (std::uint64_t bytes = 1; bytes <= 61; ++bytes) {
            bench.setUsedMemory(bytes);
            bench.sample();
            expected.append(static_cast<double>(bytes) / 64.0 * 100.0);
        }
        expected.removeFirst();
        QCOMPARE(bench.dashboard.memoryHistory(), expected);
        QCOMPARE(bench.dashboard.memoryLow(),
                 OptionalDouble(1.5625)); // of the run, not of the list
        QCOMPARE(bench.dashboard.memoryHigh(), OptionalDouble(95.3125));
    }

    void extremesMoveOnlyOutwards()
    {
        Bench bench;
        bench.addBusyTicks(0);
        bench.sample();
        const DashboardViewModel &dashboard = bench.dashboard;
        QCOMPARE(dashboard.cpuUsageHigh(), OptionalDouble(0.0));
        QSignalSpy highs(&dashboard, &DashboardViewModel::cpuUsageHighChanged);
        QSignalSpy lows(&dashboard, &DashboardViewModel::cpuUsageLowChanged);
        for (const std::uint64_t busy : {30, 80, 80, 10}) {
            bench.addBusyTicks(busy);
            bench.sample();
        }
        QCOMPARE(dashboard.cpuUsageHistory(), (QList<double>{0.0, 30.0, 80.0, 80.0, 10.0}));
        QCOMPARE(dashboard.cpuUsageHigh(), OptionalDouble(80.0));
        QCOMPARE(dashboard.cpuUsageLow(), OptionalDouble(0.0));
        QCOMPARE(highs.count(), 2);
        QCOMPARE(lows.count(), 0);
        QCOMPARE(dashboard.displayText(SystemMetric::cpuUsage), QStringLiteral("10%"));
    }

    void noPhysicalMemoryIsZeroPercent()
    {
        Bench bench(0);
        bench.setUsedMemory(5);
        bench.sample();
        QCOMPARE(bench.dashboard.memoryHistory(), QList<double>{0.0});
        QCOMPARE(bench.dashboard.displayText(SystemMetric::memoryUsage), QStringLiteral("0%"));
    }

    void boundValuesFollow()
    {
        Bench bench;
        bench.setUsedMemory(16);
        bench.sample();
        QProperty<QString> text(
            [&bench] { return bench.dashboard.displayText(SystemMetric::memoryUsage); });
        QCOMPARE(text.value(), QStringLiteral("25%"));
        bench.setUsedMemory(32);
        bench.sample();
        QCOMPARE(text.value(), QStringLiteral("50%"));
    }
};

METERKIN_TEST(DashboardViewModelTest);
#include "DashboardViewModelTest.moc"
