#include "Sampling/CPUReader.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <limits>

namespace {

ProcessorCore core(std::uint32_t number, CoreTicks ticks)
{
    return {number, ticks};
}

/// A core that was busy for `busy` of 100 ticks.
ProcessorCore busyCore(std::uint32_t number, std::uint64_t busy)
{
    return core(number, {busy, 0, 100 - busy, 0});
}

constexpr std::uint64_t Most = std::numeric_limits<std::uint64_t>::max();

} // namespace

Q_DECLARE_METATYPE(Cores)

class CPUReaderTest : public QObject {
    Q_OBJECT

private slots:
    void usage_data()
    {
        QTest::addColumn<Cores>("before");
        QTest::addColumn<Cores>("now");
        QTest::addColumn<QList<double>>("usages");
        QTest::addColumn<double>("aggregate");

        QTest::newRow("first") << Cores{} << Cores{busyCore(0, 90)} << QList{0.0} << 0.0;
        QTest::newRow("idle clock")
            << Cores{busyCore(0, 9)} << Cores{busyCore(0, 9)} << QList{0.0} << 0.0;
        QTest::newRow("one core") << Cores{core(0, {100, 50, 800, 50})}
                                  << Cores{core(0, {160, 70, 960, 60})} << QList{36.0} << 36.0;
        Cores idle;
        Cores busy;
        for (std::uint32_t i = 0; i < 8; ++i) {
            idle.push_back(core(i, {}));
            busy.push_back(busyCore(i, 10 * (i + 1)));
        }
        QTest::newRow("eight cores")
            << idle << busy << QList{10.0, 20.0, 30.0, 40.0, 50.0, 60.0, 70.0, 80.0} << 45.0;
        QTest::newRow("one more") << Cores{core(0, {})} << Cores{busyCore(0, 50), busyCore(1, 50)}
                                  << QList{50.0, 0.0} << 25.0;
        QTest::newRow("one less") << Cores{core(0, {}), core(1, {})} << Cores{busyCore(0, 50)}
                                  << QList{50.0} << 50.0;
        QTest::newRow("gap opens")
            << Cores{core(0, {}), busyCore(1, 99), core(2, {})}
            << Cores{busyCore(0, 20), busyCore(2, 40)} << QList{20.0, 40.0} << 30.0;
        QTest::newRow("gap closes") << Cores{core(0, {}), core(2, {})}
                                    << Cores{busyCore(0, 30), busyCore(1, 99), busyCore(2, 60)}
                                    << QList{30.0, 0.0, 60.0} << 30.0;
        QTest::newRow("counter goes down")
            << Cores{core(0, {0, 0, 500, 0})} << Cores{core(0, {10, 0, 400, 0})} << QList{100.0}
            << 100.0;
        QTest::newRow("all go down")
            << Cores{core(0, {9, 9, 9, 9})} << Cores{core(0, {1, 1, 1, 1})} << QList{0.0} << 0.0;
        QTest::newRow("largest counters")
            << Cores{core(0, {})} << Cores{core(0, {Most, Most, Most, Most})} << QList{75.0}
            << 75.0;
    }
    void usage()
    {
        QFETCH(Cores, before);
        QFETCH(Cores, now);
        m_script->set(before);
        m_reader.read();
        m_script->set(now);
        const std::optional<CPUInfo> info = m_reader.read();
        QVERIFY(info);
        QTEST(info->perCoreUsage, "usages");
        QTEST(info->aggregateUsage, "aggregate");
    }

    void noCoreIsNoFailure()
    {
        m_script->set(Cores{core(0, {})});
        m_reader.read();
        m_script->set(Cores{});
        const std::optional<CPUInfo> info = m_reader.read();
        QVERIFY(info && info->perCoreUsage.isEmpty());
        QCOMPARE(info->aggregateUsage, 0.0);
    }

    void failedReadKeepsTheLastGoodCounters()
    {
        m_script->set(Cores{core(0, {})});
        m_reader.read();
        m_script->set(std::nullopt);
        QVERIFY(!m_reader.read());
        m_script->set(Cores{busyCore(0, 25)});
        QCOMPARE(m_reader.read()->aggregateUsage, 25.0);
    }

    void keptSampleStaysAsItWas()
    {
        m_script->set(Cores{core(0, {})});
        m_reader.read();
        m_script->set(Cores{busyCore(0, 25)});
        const std::optional<CPUInfo> kept = m_reader.read();
        for (int i = 0; i < 3; ++i)
            m_reader.read();
        QCOMPARE(kept->perCoreUsage, QList{25.0});
    }

private:
    std::shared_ptr<TicksScript> m_script = std::make_shared<TicksScript>();
    CPUReader m_reader{std::make_unique<ScriptedTicks>(m_script)};
};

METERKIN_TEST(CPUReaderTest);

#include "CPUReaderTest.moc"
