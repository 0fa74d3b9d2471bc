#include "Sampling/CPUReader.h"
#include "Files.h"
#include "Platform/Linux/Sensors/ProcessorTicks.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <limits>

namespace {

/// A core that was busy for `busy` of 100 ticks.
ProcessorCore busyCore(std::uint32_t number, std::uint64_t busy)
{
    return {number, {busy, 0, 100 - busy, 0}};
}

constexpr std::uint64_t Most = std::numeric_limits<std::uint64_t>::max();

/// "number:user,system,idle,nice" of each core, or "failed".
QByteArray parsed(const QByteArray &text)
{
    std::vector<ProcessorCore> cores;
    if (!LinuxProcessorTicks::parse(text.toStdString(), cores))
        return "failed";
    QByteArrayList list;
    for (const auto &[number, ticks] : cores)
        list += QByteArray::fromStdString(std::to_string(number) + ':' + std::to_string(ticks.user)
                                          + ',' + std::to_string(ticks.system) + ','
                                          + std::to_string(ticks.idle) + ','
                                          + std::to_string(ticks.nice));
    return list.join(' ');
}

const QByteArray Good = "cpu1 1 2 3 4 5 6 7 8 9 10\n";
const QByteArray GoodCore = "1:1,24,9,2";

} // namespace

class CPUReaderTest : public QObject {
    Q_OBJECT

private slots:
    void usage()
    {
        const struct {
            Cores before;
            Cores now;
            QList<double> usages;
            double aggregate;
        } cases[]{
            {{}, {busyCore(0, 90)}, {0.0}, 0.0},
            {{{0, {}}}, {}, {}, 0.0},
            {{busyCore(0, 9)}, {busyCore(0, 9)}, {0.0}, 0.0},
            {{{0, {100, 50, 800, 50}}}, {{0, {160, 70, 960, 60}}}, {36.0}, 36.0},
            // A core goes off line, and comes back.
            {{{0, {}}, busyCore(1, 99), {2, {}}},
             {busyCore(0, 20), busyCore(2, 40)},
             {20.0, 40.0},
             30.0},
            {{{0, {}}, {2, {}}},
             {busyCore(0, 30), busyCore(1, 99), busyCore(2, 60)},
             {30.0, 0.0, 60.0},
             30.0},
            // Waiting time is taken back; then all counters go down.
            {{{0, {0, 0, 500, 0}}}, {{0, {10, 0, 400, 0}}}, {100.0}, 100.0},
            {{{0, {9, 9, 9, 9}}}, {{0, {1, 1, 1, 1}}}, {0.0}, 0.0},
            {{{0, {}}}, {{0, {Most, Most, Most, Most}}}, {75.0}, 75.0},
        };
        for (const auto &[before, now, usages, aggregate] : cases) {
            const auto script = std::make_shared<TicksScript>();
            CPUReader reader(std::make_unique<ScriptedTicks>(script));
            script->set(before);
            reader.read();
            script->set(std::nullopt); // a failed read changes nothing for the next
            QVERIFY(!reader.read());
            script->set(now);
            const std::optional<CPUInfo> info = reader.read();
            QVERIFY(info);
            for (int i = 0; i < 3; ++i)
                reader.read();
            QCOMPARE(info->perCoreUsage, usages); // a kept sample stays as it was
            QCOMPARE(info->aggregateUsage, aggregate);
        }
    }

    void columnsAndLines()
    {
        const QByteArray damaged(
            "cpu0 1 2 3|cpu0 1 -2 3 4|cpu0 1 2 3 4 -5|cpu0 1 2 3 4x|cpuX 1 2 3 4|"
            "cpu-1 1 2 3 4|cpu0 99999999999999999999 2 3 4|cpu4294967296 1 2 3 4|"
            "cpu0 0 0 0 18446744073709551615 1");
        for (const QByteArray &line : damaged.split('|'))
            QVERIFY2(parsed(line + '\n' + Good) == GoodCore, line);
        QCOMPARE(parsed(QByteArray("cpu0 1\0 2 3 4\n", 14) + Good), GoodCore);
        QCOMPARE(parsed("cpu  9 9 9 9\n" + Good + "intr 5\ncpu2 1 2 3 4\n"), GoodCore);
        QCOMPARE(parsed("cpu0 1 2 3 4\ncpu7 1 2 3 4 5 \n"), QByteArray("0:1,3,4,2 7:1,3,9,2"));
        QCOMPARE(parsed("cpu0 1 2 3 4" + QByteArray(100000, ' ') + "5\n"), QByteArray("0:1,3,9,2"));
        QCOMPARE(parsed("intr 5\n" + Good), QByteArray("failed"));
        QCOMPARE(parsed(Good + Good), QByteArray("failed"));
    }

    void everyPrefixHoldsTheFullLinesOnly()
    {
        const QByteArray whole = contents(QStringLiteral(FIXTURES "/stat-2-cores.txt"));
        const QByteArrayList cores = parsed(whole).split(' ');
        QCOMPARE(cores.size(), 2);
        for (qsizetype size = 0; size < whole.size(); ++size) {
            const QByteArray prefix = whole.left(size);
            const qsizetype full = std::clamp<qsizetype>(prefix.count('\n') - 1, 0, 2);
            QCOMPARE(parsed(prefix), full == 0 ? "failed" : cores.first(full).join(' '));
        }
    }

    void thousandCoresInAFileThatFailedBefore()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("stat"));
        LinuxProcessorTicks source(path.toStdString());
        std::vector<ProcessorCore> cores;
        QVERIFY(!source.read(cores));
        QVERIFY(QDir().mkdir(path)); // opens, but cannot be read
        QVERIFY(!source.read(cores));
        QVERIFY(QDir().rmdir(path));
        QByteArray text;
        for (int i = 0; i < 1024; ++i)
            text += "cpu" + QByteArray::number(i) + ' ' + QByteArray::number(i * 1000003LL)
                + " 0 0 9876543210 0 0 0 0 0 0\n";
        QVERIFY(write(path, text + "intr " + QByteArray(50000, '0') + '\n'));
        QVERIFY(source.read(cores));
        QCOMPARE(cores.size(), std::size_t(1024));
        QCOMPARE(cores.back().ticks.user, std::uint64_t(1023 * 1000003LL));
        const auto pages = [] {
            return contents(QStringLiteral("/proc/self/statm")).split(' ').value(5).toLongLong();
        };
        const qint64 before = pages();
        QVERIFY(
            QFile::resize(path, 1 << 30)); // text without end, with a buffer as large as it gets
        QVERIFY(!source.read(cores));
        QVERIFY(write(path, "cpu0 5 2 3 4\n"));
        QVERIFY(source.read(cores) && cores.size() == 1 && cores.front().ticks.user == 5);
        QVERIFY(pages() < before + 256); // in no buffer that is kept, by the heap neither
    }
};

METERKIN_TEST(CPUReaderTest);
#include "CPUReaderTest.moc"
