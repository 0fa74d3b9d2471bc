#include "Sampling/MetricCollector.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QPointer>
#include <QThread>
#include <QtTest>

#include <limits>

namespace {

constexpr double Never = 1e6; // seconds: the timer does not fire while a test runs

} // namespace

class MetricCollectorTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_machine = ScriptedMachine();
        m_machine.physicalMemory = 16000;
        m_machine.ticks->set(Cores{{0, {1, 2, 3, 4}}});
        m_machine.pages->set(PageCounts{1000, 1, 2, 3, 4, 5});
        m_machine.fans->set(
            {{{"FNum", {"ui8 ", {2, 0, 0, 0}, 1}}, {"F1Ac", {"ui16", {4, 176, 0, 0}}}}});
        makeCollector();
    }
    void cleanup() { m_collector.reset(); }

    void publishesTheFirstSampleAtOnce()
    {
        QVERIFY(!m_collector->latestMemory() && !m_collector->latestCPUInfo());
        std::optional<MemoryInfo> memory;
        QThread *thread = nullptr;
        m_collector->onTick = [&] {
            memory = m_collector->latestMemory();
            thread = QThread::currentThread();
            ++m_ticks;
        };
        m_collector->start(Never);
        QTRY_COMPARE(m_ticks, 1);
        QCOMPARE(thread, QCoreApplication::instance()->thread());
        QVERIFY(memory == (MemoryInfo{1000, 2000, 3000, 4000, 5000, 16000}));
        QCOMPARE(m_collector->latestCPUInfo()->perCoreUsage, QList{0.0});
        QCOMPARE(m_collector->fanCount(), 2);
        const QList<FanReading> fans{{1, 1200.0, {}, {}}};
        QCOMPARE(m_collector->latestFanSpeeds(), fans);
    }

    void samplesAgainAndAgain()
    {
        m_collector->start(0.0);
        QTRY_VERIFY(m_ticks >= 3);
    }

    void onlyChangesAreNotified()
    {
        QSignalSpy memory(m_collector.get(), &MetricCollector::latestMemoryChanged);
        QSignalSpy processors(m_collector.get(), &MetricCollector::latestCPUInfoChanged);
        QSignalSpy fans(m_collector.get(), &MetricCollector::latestFanSpeedsChanged);
        QSignalSpy fanCount(m_collector.get(), &MetricCollector::fanCountChanged);
        const auto counts = [&] {
            return QList{memory.size(), processors.size(), fans.size(), fanCount.size()};
        };
        sampleOnce();
        sampleOnce();
        QCOMPARE(counts(), (QList<qsizetype>{1, 1, 1, 1}));
        m_machine.pages->set(std::nullopt);
        m_machine.ticks->set(std::nullopt);
        m_machine.fans->set({{{"FNum", {"ui8 ", {2, 0, 0, 0}, 1}}}});
        sampleOnce();
        QCOMPARE(counts(), (QList<qsizetype>{2, 2, 2, 1}));
        QVERIFY(!m_collector->latestMemory() && !m_collector->latestCPUInfo());
        QVERIFY(m_collector->latestFanSpeeds().isEmpty());
    }

    void machineWithoutFans()
    {
        m_machine.fans->set(std::nullopt);
        makeCollector();
        QSignalSpy fanCount(m_collector.get(), &MetricCollector::fanCountChanged);
        sampleOnce();
        sampleOnce();
        QCOMPARE(m_collector->fanCount(), 0);
        QVERIFY(fanCount.isEmpty());
        QVERIFY(m_collector->latestMemory());
    }

    void propertiesCanBeBoundButNotWritten()
    {
        QProperty<qint64> bound(m_collector->bindableFanCount().makeBinding());
        QVERIFY(m_collector->bindableFanCount().isReadOnly());
        QVERIFY(m_collector->bindableLatestMemory().isReadOnly());
        sampleOnce();
        QCOMPARE(bound.value(), 2);
    }

    void anyIntervalIsSafe_data()
    {
        using Limits = std::numeric_limits<double>;
        constexpr int longest = std::numeric_limits<int>::max();
        QTest::addColumn<double>("interval");
        QTest::addColumn<int>("milliseconds");
        QTest::newRow("usual") << 3.0 << 3000;
        QTest::newRow("tiny") << Limits::denorm_min() << 100;
        QTest::newRow("zero") << 0.0 << 100;
        QTest::newRow("negative") << -5.0 << 100;
        QTest::newRow("minus infinite") << -Limits::infinity() << 100;
        QTest::newRow("no number") << Limits::quiet_NaN() << 100;
        QTest::newRow("enormous") << Limits::max() << longest;
        QTest::newRow("infinite") << Limits::infinity() << longest;
    }
    void anyIntervalIsSafe()
    {
        QFETCH(double, interval);
        m_collector->start(7.0);
        m_collector->start(interval);
        const auto timers = m_collector->findChildren<QTimer *>();
        QCOMPARE(timers.size(), 1); // the earlier start left none behind
        QVERIFY(timers.first()->isActive() && !timers.first()->isSingleShot());
        QTEST(timers.first()->interval(), "milliseconds");
        QTRY_VERIFY(m_ticks > 0);
    }

    void oneSampleWaitsAtMost()
    {
        m_machine.pages->hold();
        m_collector->start(Never);
        QVERIFY(m_machine.pages->waitForHeldRead());
        for (int i = 0; i < 5; ++i)
            m_collector->start(Never);
        m_machine.pages->release();
        QTRY_COMPARE(m_ticks, 2);
        sampleOnce();
        QCOMPARE(m_machine.pages->readCount(), 3);
    }

    void destroyedWhileASensorHangs()
    {
        m_machine.pages->hold();
        m_collector->start(Never);
        QVERIFY(m_machine.pages->waitForHeldRead());
        m_collector->start(Never);
        m_collector.reset();
        m_machine.pages->release();
        QTRY_COMPARE(m_machine.pages.use_count(), 1L); // the readers went with their last sample
        QCoreApplication::processEvents();
        QCOMPARE(m_ticks, 0);
        QCOMPARE(m_machine.pages->readCount(), 1);
    }

    void destroyedInItsOwnTick()
    {
        QPointer<MetricCollector> collector = m_collector.get();
        m_collector->onTick = [this] { m_collector.reset(); };
        m_collector->start(Never);
        QTRY_VERIFY(!collector);
    }

    /// The last one: the program must come to its end with this sensor still hanging.
    void programEndsWhileASensorHangs()
    {
        m_machine.ticks->hold();
        m_collector->start(Never);
        QVERIFY(m_machine.ticks->waitForHeldRead());
    }

private:
    void makeCollector()
    {
        m_collector = m_machine.makeCollector();
        m_ticks = 0;
        m_collector->onTick = [this] { ++m_ticks; };
    }
    void sampleOnce()
    {
        const int before = m_ticks;
        m_collector->start(Never);
        QTRY_COMPARE(m_ticks, before + 1);
    }

    ScriptedMachine m_machine;
    std::unique_ptr<MetricCollector> m_collector;
    int m_ticks = 0;
};

METERKIN_TEST(MetricCollectorTest);

#include "MetricCollectorTest.moc"
