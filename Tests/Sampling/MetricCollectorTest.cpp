#include "Sampling/MetricCollector.h"
#include "Sampling/FanSampler.h"
#include "Sampling/ReadingLoop.h"
#include "Support/ScriptedVitals.h"
#include "Support/TestMain.h"

#include <QThread>
#include <QtTest>

#include <limits>
#include <thread>

class MetricCollectorTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_vitals =
            std::make_shared<Vitals>(Vitals{.fanSpeed = 1200.0, .memory = 25.0, .cpuUsage = 40.0});
        m_collector = std::make_unique<MetricCollector>(makeSources(m_vitals));
        m_ticks = 0;
        m_collector->onTick = [this] {
            QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
            ++m_ticks;
        };
    }
    void cleanup() { m_collector.reset(); }

    void publishesWhatChanged()
    {
        QSignalSpy memory(m_collector.get(), &MetricCollector::latestMemoryChanged);
        QSignalSpy fans(m_collector.get(), &MetricCollector::latestFanSpeedsChanged);
        sampleOnce();
        sampleOnce();
        QCOMPARE(m_collector->latestCPUInfo()->perCoreUsage, QList{40.0});
        QVERIFY(memory.size() == 1 && fans.size() == 1);
        *m_vitals = Vitals();
        sampleOnce();
        QVERIFY(memory.size() == 2 && fans.size() == 2);
        QVERIFY(!m_collector->latestMemory() && !m_collector->latestCPUInfo());
        QVERIFY(m_collector->latestFanSpeeds().isEmpty());
    }

    void restartsWithAnyInterval()
    {
        m_collector->start(std::numeric_limits<double>::infinity());
        QTRY_COMPARE(m_ticks, 1);
        m_collector->start(std::numeric_limits<double>::min());
        QTRY_VERIFY(m_ticks >= 4);
    }

    void keepsTimeWithoutDrift()
    {
        using namespace std::chrono_literals;
        using Time = std::chrono::steady_clock::time_point;
        ReadingTimes times;
        times.restart(Time(0s), 3s);
        // The time of a claim or of a begin, and what comes of it: the claimed time, or 1 or 0.
        for (const auto &[claims, now, result] :
             {std::tuple(true, 0s, 0s),
              {false, 0s, 1s},
              {true, 0s, 3s},
              {true, 1s, 6s},
              {false, 4s, 1s},
              {true, 5s, 9s}, // late, and the next one is not
              // Two threads wake up when the computer slept through many readings.
              {false, 100s, 1s},
              {true, 100s, 102s},
              {false, 100s, 0s},
              {true, 100s, 105s},
              {false, 102s, 1s}}) {
            if (claims)
                QVERIFY(times.claim(Time(now)) == Time(result));
            else
                QCOMPARE(times.begin(Time(now)), result == 1s);
        }
    }

    void keepsWhatDoesNotMatter()
    {
        m_collector->setFilter([](const Reading &) { return false; });
        m_collector->start(0.1);
        QTRY_COMPARE(m_ticks, 1); // what was asked for matters
        QTRY_VERIFY(m_ticks > 1);
        QCOMPARE(m_ticks, 1 + static_cast<int>(ReadingLoop::MostKept));
        QTRY_VERIFY(m_vitals->memoryGate->readCount() > m_ticks + 2);
        const int before = m_ticks;
        m_collector->publishNow();
        QVERIFY(m_ticks >= before + 2 && m_ticks < before + 9);
    }

    void atMostOneSampleWaits()
    {
        hangInMemory();
        for (int i = 0; i < 5; ++i)
            m_collector->start(Never);
        m_vitals->memoryGate->open();
        QTRY_COMPARE(m_ticks, 2);
        sampleOnce();
        QCOMPARE(m_vitals->memoryGate->readCount(), 3);
    }

    void hangingFansDelayNothingElse()
    {
        m_vitals->fanGate->close();
        for (int i = 0; i < 5; ++i)
            sampleOnce();
        QVERIFY(m_collector->latestMemory() && !m_collector->areFansKnown());
        QCOMPARE(m_vitals->fanGate->readCount(), 1); // and no read waits behind the first
        m_vitals->fanGate->open();
        QTRY_VERIFY((sampleOnce(), m_collector->areFansKnown()));
    }

    void speedsOfHangingFansAreDropped()
    {
        std::atomic<int> seconds = 0;
        FanSampler fans(std::make_unique<VitalFans>(m_vitals), [&seconds] {
            return std::chrono::steady_clock::time_point(std::chrono::seconds(seconds));
        });
        std::optional<FanSample> latest;
        fans.copyLatest(latest);
        QVERIFY(!latest);
        fans.refresh();
        QCOMPARE(fans.pace(), FanSampler::Pace::Open);
        m_vitals->fanGate->close();
        std::thread thread([&fans] { fans.refresh(); });
        QTRY_COMPARE(m_vitals->fanGate->readCount(), 2);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("sensor hangs")));
        for (const auto &[now, known] : {std::pair(8, 1), std::pair(11, 0), std::pair(12, 0)}) {
            seconds = now;
            fans.copyLatest(latest);
            QVERIFY(latest->fans.size() == known && latest->count == 1);
        }
        m_vitals->fanGate->open();
        thread.join();
        fans.copyLatest(latest);
        QVERIFY(latest->fans.size() == 1 && fans.pace() == FanSampler::Pace::Slow);
    }

    void destroyedInItsOwnTick()
    {
        m_collector->onTick = [this] { m_collector.reset(); };
        m_collector->start(Never);
        QTRY_VERIFY(!m_collector);
    }

    void destroyedWhileASensorHangs()
    {
        hangInMemory();
        m_collector->start(Never);
        m_collector.reset();
        m_vitals->memoryGate->open();
        QTRY_COMPARE(m_vitals.use_count(), 1L); // the readers are gone, too
        QCoreApplication::processEvents();
        QCOMPARE(m_ticks, 0);
        QCOMPARE(m_vitals->memoryGate->readCount(), 1);
        init();
        hangInMemory(); // the process must end all the same
    }

private:
    void sampleOnce()
    {
        const int before = m_ticks;
        m_collector->start(Never);
        QTRY_COMPARE(m_ticks, before + 1);
    }
    void hangInMemory()
    {
        m_vitals->memoryGate->close();
        m_collector->start(Never);
        QTRY_COMPARE(m_vitals->memoryGate->readCount(), 1);
    }

    static constexpr double Never = 1e6; // seconds: the timer does not fire while a test runs
    std::shared_ptr<Vitals> m_vitals;
    std::unique_ptr<MetricCollector> m_collector;
    int m_ticks = 0;
};

METERKIN_TEST(MetricCollectorTest);
#include "MetricCollectorTest.moc"
