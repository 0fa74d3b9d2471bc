#include "Sampling/MetricCollector.h"
#include "Sampling/FanSampler.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QPointer>
#include <QThread>
#include <QtTest>

#include <limits>
#include <thread>

class MetricCollectorTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_machine = ScriptedMachine();
        m_machine.physicalMemory = 16000;
        m_machine.ticks->set(Cores{{0, {1, 2, 3, 4}}});
        m_machine.pages->set(PageCounts{1000, 1, 2, 3, 4, 5});
        m_machine.fans->set({{{"FNum", {"ui8 ", {2}, 1}}, {"F1Ac", {"ui16", {4, 176}}}}});
        m_collector = m_machine.makeCollector();
        m_ticks = 0;
        m_collector->onTick = [this] { ++m_ticks; };
    }
    void cleanup() { m_collector.reset(); }

    void publishesWhatChanged()
    {
        QSignalSpy memory(m_collector.get(), &MetricCollector::latestMemoryChanged);
        QSignalSpy fans(m_collector.get(), &MetricCollector::latestFanSpeedsChanged);
        QThread *thread = nullptr;
        m_collector->onTick = [&] {
            thread = QThread::currentThread();
            ++m_ticks;
        };
        sampleOnce();
        QCOMPARE(thread, QCoreApplication::instance()->thread());
        QVERIFY(m_collector->latestMemory() == (MemoryInfo{1000, 2000, 3000, 4000, 5000, 16000}));
        QCOMPARE(m_collector->latestCPUInfo()->perCoreUsage, QList{0.0});
        QCOMPARE(m_collector->fanCount(), 2);
        QCOMPARE(m_collector->latestFanSpeeds(), (QList<FanReading>{{1, 1200.0, {}, {}}}));
        sampleOnce();
        QVERIFY(memory.size() == 1 && fans.size() == 1);

        m_machine.pages->set(std::nullopt);
        m_machine.ticks->set(std::nullopt);
        m_machine.fans->set(FanKeys::value_type());
        sampleOnce();
        QVERIFY(memory.size() == 2 && fans.size() == 2);
        QVERIFY(!m_collector->latestMemory() && !m_collector->latestCPUInfo());
        QVERIFY(m_collector->latestFanSpeeds().isEmpty());
    }

    void anyIntervalIsSafe()
    {
        using Limits = std::numeric_limits<double>;
        const QTimer *timer = m_collector->findChild<QTimer *>();
        for (const auto &[interval, milliseconds] :
             {std::pair(3.0, 3000), std::pair(Limits::infinity(), std::numeric_limits<int>::max()),
              std::pair(Limits::quiet_NaN(), 100), std::pair(-5.0, 100)}) {
            m_collector->start(interval);
            QVERIFY(timer->isActive());
            QCOMPARE(timer->interval(), milliseconds);
        }
        QCOMPARE(m_collector->findChildren<QTimer *>().size(), 1); // no start left one behind
        QTRY_VERIFY(m_ticks >= 6);
    }

    void oneSampleWaitsAtMost()
    {
        m_machine.pages->hold();
        m_collector->start(Never);
        QTRY_COMPARE(m_machine.pages->readCount(), 1);
        for (int i = 0; i < 5; ++i)
            m_collector->start(Never);
        m_machine.pages->release();
        QTRY_COMPARE(m_ticks, 2);
        sampleOnce();
        QCOMPARE(m_machine.pages->readCount(), 3);
    }

    void fansHoldUpNothingElse()
    {
        m_machine.fans->hold();
        m_collector->start(Never);
        QTRY_COMPARE(m_ticks, 1);
        QVERIFY(m_collector->latestMemory() && !m_collector->areFansKnown());
        const int asked = m_machine.fans->readCount();
        for (int i = 0; i < 5; ++i)
            sampleOnce();
        QCOMPARE(m_machine.fans->readCount(), asked); // and no question waits behind the first
        m_machine.fans->release();
        QVERIFY(QTest::qWaitFor([this] {
            sampleOnce();
            return m_collector->areFansKnown();
        }));
        QCOMPARE(m_collector->latestFanSpeeds().size(), 1);

        m_machine.fans->hold();
        sampleOnce();
        sampleOnce();
        QCOMPARE(m_collector->latestFanSpeeds().size(), 1); // for a while
        m_machine.fans->release();
    }

    void lateFansAreForgotten()
    {
        std::atomic<int> seconds = 0;
        FanSampler fans(std::make_unique<ScriptedFans>(m_machine.fans), [&seconds] {
            return std::chrono::steady_clock::time_point(std::chrono::seconds(seconds));
        });
        fans.refresh();
        QVERIFY(fans.latest()->fans.size() == 1 && !fans.isSlow());
        const int asked = m_machine.fans->readCount();
        m_machine.fans->hold();
        std::thread thread([&fans] { fans.refresh(); });
        QTRY_VERIFY(m_machine.fans->readCount() > asked);
        for (const auto &[now, known] : {std::pair(8, 1), std::pair(11, 0)}) {
            seconds = now;
            QCOMPARE(fans.latest()->fans.size(), known);
            QCOMPARE(fans.latest()->count, 2);
        }
        m_machine.fans->release();
        thread.join();
        QVERIFY(fans.latest()->fans.size() == 1 && fans.isSlow());
    }

    void destroyedWhileASensorHangs()
    {
        m_machine.pages->hold();
        m_collector->start(Never);
        QTRY_COMPARE(m_machine.pages->readCount(), 1);
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
        QTRY_COMPARE(m_machine.ticks->readCount(), 1);
    }

private:
    void sampleOnce()
    {
        const int before = m_ticks;
        m_collector->start(Never);
        QTRY_COMPARE(m_ticks, before + 1);
    }

    static constexpr double Never = 1e6; // seconds: the timer does not fire while a test runs
    ScriptedMachine m_machine;
    std::unique_ptr<MetricCollector> m_collector;
    int m_ticks = 0;
};

METERKIN_TEST(MetricCollectorTest);
#include "MetricCollectorTest.moc"
