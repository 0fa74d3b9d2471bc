#include "Model/VisibleChanges.h"
#include "Sampling/ReadingBatch.h"
#include "Support/TestMain.h"

#include <QtTest>

namespace {

using namespace std::chrono_literals;

/// One reading; memory in percent, fans in RPM.
struct Step {
    std::optional<double> memory;
    double cpuUsage = 0.0;
    std::optional<QList<double>> fans = {};
    int time = 0; // seconds
};

Reading readingOf(const Step &step)
{
    Reading reading{std::chrono::system_clock::time_point(std::chrono::seconds(step.time)), {}};
    if (step.memory)
        reading.sample.memory = MemoryInfo{
            .activeBytes = static_cast<std::uint64_t>(*step.memory * 1000), .totalBytes = 100'000};
    reading.sample.processors = CPUInfo{step.cpuUsage, {}};
    if (step.fans) {
        reading.sample.fans.emplace().count = 2;
        for (const double rpm : *step.fans)
            reading.sample.fans->fans.append(FanReading{0, rpm, {}, {}});
    }
    return reading;
}

/// The memory is the title; tiers begin at 60 and 80, alerts at 80.
VisibleValues valuesWith(bool isAlertOn, std::optional<std::chrono::seconds> toolTipPeriod)
{
    VisibleValues values;
    values.toolTipPeriod = toolTipPeriod;
    for (const SystemMetric metric : allMetrics) {
        values.thresholds[metric] = {60.0, 80.0};
        values.isAlertOn[metric] = isAlertOn;
    }
    return values;
}

} // namespace

class VisibleChangesTest : public QObject {
    Q_OBJECT

private slots:
    void areFound()
    {
        const VisibleValues plain = valuesWith(false, {});
        const VisibleValues alerting = valuesWith(true, {});
        const VisibleValues keptToolTip = valuesWith(false, 5s);
        const std::tuple<const char *, VisibleValues, QList<Step>, QByteArray> cases[]{
            {"title, halves to even", plain, {{41.6}, {42.4}, {42.5}, {42.6}, {}, {}}, "100110"},
            {"tier of an equal text", plain, {{59.9}, {60.0}, {60.4}, {59.6}}, "1101"},
            {"nothing else", plain, {{42, 10}, {42, 95}, {42, 5}}, "100"},
            {"alerts rise", alerting, {{42, 70}, {42, 80}, {42, 99}, {42, 79}, {42, 81}}, "11001"},
            {"fans", plain, {{42}, {42, 0, {{}}}, {42, 0, {{5, 6}}}, {42, 0, {{7, 8}}}}, "1110"},
            {"tool tip",
             keptToolTip,
             {{42, 1, {}, 0}, {42, 2, {}, 3}, {42, 2, {}, 6}, {42, 2, {}, 12}, {42, 3, {}, -9}},
             "10101"},
        };
        for (const auto &[name, values, steps, expected] : cases) {
            VisibleChanges changes;
            changes.follow(values);
            QByteArray found;
            for (const Step &step : steps)
                found += changes.areIn(readingOf(step)) ? '1' : '0';
            QVERIFY2(found == expected, name + (": " + found));
        }
    }

    void areInWhatIsWatchedNow()
    {
        VisibleChanges changes;
        VisibleValues values = valuesWith(false, {});
        changes.follow(values);
        QVERIFY(changes.areIn(readingOf({42})) && !changes.areIn(readingOf({42})));
        values.areAll = true;
        changes.follow(values);
        QVERIFY(changes.areIn(readingOf({42})) && changes.areIn(readingOf({42})));
        values.areAll = false; // which changes nothing else
        changes.follow(values);
        QVERIFY(!changes.areIn(readingOf({42})));
        values.thresholds[SystemMetric::CpuUsage].green = 5.0;
        changes.follow(values);
        changes.follow(values);
        QVERIFY(changes.areIn(readingOf({42})) && !changes.areIn(readingOf({42})));
    }
};

METERKIN_TEST(VisibleChangesTest);
#include "VisibleChangesTest.moc"
