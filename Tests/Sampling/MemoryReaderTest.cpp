#include "Sampling/MemoryReader.h"
#include "Files.h"
#include "Platform/Linux/Sensors/MeminfoLines.h"
#include "Platform/Linux/Sensors/PageCounters.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>

namespace {

std::optional<MemoryInfo> converted(const PageCounts &counts)
{
    const auto script = std::make_shared<PagesScript>();
    script->set(counts);
    return MemoryReader(17179869184, std::make_unique<ScriptedPages>(script)).read();
}

std::optional<PageCounts> counted(const QByteArray &text)
{
    const std::optional<MeminfoLines> lines = MeminfoLines::parse(text.toStdString());
    return lines ? lines->pageCounts(0) : std::nullopt;
}

/// Total and used in bytes, as free(1) sees them.
std::pair<qint64, qint64> freeSays()
{
    QProcess process;
    process.start(QStringLiteral("free"), {QStringLiteral("-b")});
    if (!process.waitForFinished())
        return {};
    const QList<QByteArray> words =
        process.readAllStandardOutput().split('\n').value(1).simplified().split(' ');
    return {words.value(1).toLongLong(), words.value(2).toLongLong()};
}

QByteArray basic(const QByteArray &total, const QByteArray &free, const QByteArray &available)
{
    return "MemTotal: " + total + " kB\nMemFree: " + free + " kB\nMemAvailable: " + available
        + " kB\n";
}

const QByteArray Smallest = basic("1000", "100", "400");

} // namespace

class MemoryReaderTest : public QObject {
    Q_OBJECT

private slots:
    void convertsToBytes()
    {
        const MemoryInfo expected{3276800000, 1638400000, 819200000,
                                  2457600000, 16384000,   17179869184};
        QVERIFY(converted({16384, 200000, 100000, 50000, 150000, 1000}) == expected);
        QVERIFY(qAbs(expected.usagePercent() - 33.38) < 0.01);

        constexpr std::uint64_t half = std::numeric_limits<std::uint64_t>::max() / 2;
        QVERIFY(!converted({0, 1})); // page size unknown
        QVERIFY(!converted({4096, half})); // the product overflows
        QVERIFY(!converted({1, half, half})); // the sum does
        QVERIFY(converted({4096, std::uint64_t(1) << 40}));
    }

    void meminfo()
    {
        const std::pair<QByteArray, QByteArray> cases[]{
            // active wired compressed inactive free
            {Smallest + "SUnreclaim: 10 kB\nKernelStack: 20 kB\nPageTables: 30 kB\n"
                 + "SecPageTables: 40 kB\nPercpu: 50 kB\nZswap: 60 kB\nSlab: 99 kB\n",
             "390 150 60 300 100"},
            {Smallest + "SUnreclaim: 700 kB\nZswap: 5 kB\n", "0 600 0 300 100"},
            {Smallest + "SUnreclaim: 500 kB\nZswap: 200 kB\n", "0 500 100 300 100"},
            {"Nonsense\n: 5\nOther: -1 kB\n\n" + Smallest, "600 0 0 300 100"},
            {"MemTotal: 9 kB\nMemFree: 1 kB\nBuffers: 5 kB\n", "8 0 0 0 1"}, // old kernel
            {basic("1000", "300", "200"), "800 0 0 0 300"},
            {basic("1000", "100", "5000"), "900 0 0 0 100"}, // available of the host

            {basic("0", "0", "0"), "absent"},
            {basic("1000", "1001", "400"), "absent"},
            {basic("-1000", "100", "400"), "absent"},
            {basic("1000", "100", "x") + "Buffers: 1 kB\n", "absent"},
            {basic("1000 MB", "100", "400"), "absent"},
            {"MemTotal: 1000 kB\nMemAvailable: 400 kB\n", "absent"},
            {Smallest + "MemFree: 200 kB\n", "absent"},
            {Smallest + "Zswap: 99999999999999999999 kB\n", "absent"},
            {Smallest + "Zswap: 18446744073709551615 kB\n", "absent"},
        };
        for (const auto &[text, expected] : cases) {
            QByteArray described = "absent";
            if (const std::optional<PageCounts> counts = counted(text)) {
                described = QByteArray::number(counts->active);
                for (const auto count :
                     {counts->wired, counts->compressed, counts->inactive, counts->free})
                    described += ' ' + QByteArray::number(count);
            }
            QCOMPARE(described, expected);
        }
    }

    void everyPrefixIsAbsentOrRight()
    {
        const QByteArray whole = contents(QStringLiteral(FIXTURES "/meminfo-24-gigabytes.txt"));
        int present = 0;
        for (qsizetype size = 0; size <= whole.size(); ++size) {
            const std::optional<PageCounts> counts = counted(whole.left(size));
            if (!counts)
                continue;
            ++present;
            QCOMPARE(counts->active + counts->wired + counts->compressed, 24684084UL - 23554696UL);
        }
        QCOMPARE(present, whole.size() - whole.indexOf("Buffers:") + 1);
    }

    void zramIsFoundAgainWhenSwapChanges()
    {
        const QTemporaryDir folder;
        const QString meminfo = folder.filePath(QStringLiteral("meminfo"));
        const QString block = folder.filePath(QStringLiteral("block"));
        const auto addDevice = [&block](const char *name, const QByteArray &text) {
            QVERIFY(write(block + QLatin1String(name) + QStringLiteral("/mm_stat"), text));
        };
        QVERIFY(write(meminfo, Smallest + "SwapTotal: 0 kB\nZswap: 1 kB\n"));
        addDevice("/zram0", "   9999   8888   10240   0   7 7 7 7 7\n");
        addDevice("/zram1", "   9999   damaged\n");
        addDevice("/sda", "   0   0   1024000   0\n");
        LinuxPageCounters source(meminfo.toStdString(), block.toStdString());
        QCOMPARE(source.read()->compressed, std::uint64_t(11));

        addDevice("/zram2", "   9999   8888   40960\n");
        QVERIFY(write(meminfo, Smallest + "SwapTotal: 8 kB\nZswap: 1 kB\n"));
        QCOMPARE(source.read()->compressed, std::uint64_t(51));
    }

    void agreesWithFree()
    {
        const auto total = LinuxPageCounters().physicalMemory();
        QCOMPARE(static_cast<qint64>(total), freeSays().first);
        MemoryReader reader(total, std::make_unique<LinuxPageCounters>());
        constexpr qint64 slack = 16 << 20; // what the other program needs itself
        const auto agrees = [&reader] {
            const auto before = static_cast<qint64>(reader.read()->usedBytes());
            const qint64 used = freeSays().second;
            const auto after = static_cast<qint64>(reader.read()->usedBytes());
            return used >= std::min(before, after) - slack
                && used <= std::max(before, after) + slack;
        };
        QVERIFY(agrees() || agrees() || agrees()); // the machine may be busy

        LinuxPageCounters missing("/nonexistent");
        QVERIFY(!missing.read());
        QVERIFY(missing.physicalMemory() >= total && missing.physicalMemory() < total / 4 * 5);
    }
};

METERKIN_TEST(MemoryReaderTest);
#include "MemoryReaderTest.moc"
