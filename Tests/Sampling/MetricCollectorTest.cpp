#include "Sampling/MetricCollector.h"
#include "Sampling/FanSampler.h"
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
        const QTimer *timer = m_collector->findChild<QTimer *>();
        m_collector->start(std::numeric_limits<double>::infinity());
        QCOMPARE(timer->interval(), std::numeric_limits<int>::max());
        m_collector->start(std::numeric_limits<double>::min());
        QCOMPARE(timer->interval(), 100);
        QCOMPARE(m_collector->findChildren<QTimer *>().size(), 1); // no start left one behind
        QTRY_VERIFY(m_ticks >= 4);
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
        fans.refresh();
        QVERIFY(!fans.isSlow());
        m_vitals->fanGate->close();
        std::thread thread([&fans] { fans.refresh(); });
        QTRY_COMPARE(m_vitals->fanGate->readCount(), 2);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("sensor hangs")));
        for (const auto &[now, known] : {std::pair(8, 1), std::pair(11, 0), std::pair(12, 0)}) {
            seconds = now;
            QVERIFY(fans.latest()->fans.size() == known && fans.latest()->count == 1);
        }
        m_vitals->fanGate->open();
        thread.join();
        QVERIFY(fans.latest()->fans.size() == 1 && fans.isSlow());
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
