#include "Sampling/MemoryReader.h"
#include "Platform/Linux/MeminfoLines.h"
#include "Platform/Linux/ProcMeminfo.h"
#include "Support/ScriptedSources.h"
#include "Support/TestMain.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>

namespace {

std::string_view view(const QByteArray &text)
{
    return {text.data(), static_cast<std::size_t>(text.size())};
}

std::optional<PageCounts> counted(const QByteArray &text, std::uint64_t zramHeld = 0)
{
    const std::optional<MeminfoLines> lines = MeminfoLines::parse(view(text));
    return lines ? lines->pageCounts(zramHeld) : std::nullopt;
}

QByteArray captured()
{
    QFile file(QStringLiteral(FIXTURES "/meminfo-24-gigabytes.txt"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
        && file.write(text) == text.size();
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

const QByteArray Smallest = "MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvailable: 400 kB\n";

} // namespace

class MemoryReaderTest : public QObject {
    Q_OBJECT

private slots:
    void convertsToBytes()
    {
        const auto script = std::make_shared<PagesScript>();
        script->set(PageCounts{16384, 200000, 100000, 50000, 150000, 1000});
        MemoryReader reader(17179869184, std::make_unique<ScriptedPages>(script, 0));
        const MemoryInfo expected{3276800000, 1638400000, 819200000,
                                  2457600000, 16384000,   17179869184};
        QVERIFY(reader.read() == expected);
        QVERIFY(qAbs(expected.usagePercent() - 33.38) < 0.01);
    }

    void countsOfNoMachineAreAbsent_data()
    {
        constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
        QTest::addColumn<quint64>("pageSize");
        QTest::addColumn<quint64>("active");
        QTest::addColumn<bool>("isPresent");
        QTest::newRow("page size unknown") << quint64(0) << quint64(1) << false;
        QTest::newRow("product overflows") << quint64(4096) << quint64(most / 2) << false;
        QTest::newRow("sum overflows") << quint64(1) << quint64(most / 2) << false;
        QTest::newRow("large but possible") << quint64(4096) << (quint64(1) << 40) << true;
    }
    void countsOfNoMachineAreAbsent()
    {
        QFETCH(quint64, pageSize);
        QFETCH(quint64, active);
        const auto script = std::make_shared<PagesScript>();
        script->set(PageCounts{pageSize, active, active, active, 0, 0});
        MemoryReader reader(1, std::make_unique<ScriptedPages>(script, 0));
        QTEST(reader.read().has_value(), "isPresent");
    }

    void meminfo_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("counts"); // active wired compressed inactive free
        const auto row = [](const char *name, const QByteArray &text, const char *counts) {
            QTest::newRow(name) << text << QString::fromLatin1(counts);
        };
        const QByteArray kernelHeld = "SUnreclaim: 10 kB\nKernelStack: 20 kB\nPageTables: 30 kB\n"
                                      "SecPageTables: 40 kB\nPercpu: 50 kB\n";

        row("smallest", Smallest, "600 0 0 300 100");
        row("all", Smallest + kernelHeld + "Zswap: 60 kB\nSlab: 99 kB\nVmallocUsed: 99 kB\n",
            "390 150 60 300 100");
        row("kernel holds more than used", Smallest + "SUnreclaim: 700 kB\nZswap: 5 kB\n",
            "0 600 0 300 100");
        row("compressed more than the rest", Smallest + "SUnreclaim: 500 kB\nZswap: 200 kB\n",
            "0 500 100 300 100");
        row("less available than free",
            "MemTotal: 1000 kB\nMemFree: 300 kB\nMemAvailable: 200 kB\n", "800 0 0 0 300");
        row("nothing available", "MemTotal: 1000 kB\nMemFree: 0 kB\nMemAvailable: 0 kB\n",
            "1000 0 0 0 0");
        row("old kernel", "MemTotal: 1000 kB\nMemFree: 100 kB\nBuffers: 50 kB\nCached: 200 kB\n",
            "900 0 0 0 100");
        row("available of the host", "MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvailable: 5000 kB\n",
            "900 0 0 0 100");
        row("line not at its end", Smallest + "Zswap: 60 kB", "600 0 0 300 100");
        row("unknown lines", "Nonsense\n: 5\nOther: -1 kB\n\n" + Smallest, "600 0 0 300 100");

        row("empty", "", "absent");
        row("no total", "MemFree: 100 kB\nMemAvailable: 400 kB\n", "absent");
        row("no free", "MemTotal: 1000 kB\nMemAvailable: 400 kB\n", "absent");
        row("cut off before available", "MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvail", "absent");
        row("no memory", "MemTotal: 0 kB\nMemFree: 0 kB\nMemAvailable: 0 kB\n", "absent");
        row("more free than there is",
            "MemTotal: 1000 kB\nMemFree: 1001 kB\nMemAvailable: 400 kB\n", "absent");
        row("negative", "MemTotal: -1000 kB\nMemFree: 100 kB\nMemAvailable: 400 kB\n", "absent");
        row("available damaged",
            "MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvailable: x kB\nBuffers: 1 kB\n", "absent");
        row("other unit", "MemTotal: 1000 MB\nMemFree: 100 kB\nMemAvailable: 400 kB\n", "absent");
        row("line twice", Smallest + "MemFree: 200 kB\n", "absent");
        row("20 digits", Smallest + "Zswap: 99999999999999999999 kB\n", "absent");
        row("bytes overflow", Smallest + "Zswap: 18446744073709551615 kB\n", "absent");
    }
    void meminfo()
    {
        QFETCH(QByteArray, text);
        const std::optional<PageCounts> counts = counted(text);
        QString described = QStringLiteral("absent");
        if (counts) {
            QCOMPARE(counts->pageSize, std::uint64_t(1024));
            described = QStringLiteral("%1 %2 %3 %4 %5")
                            .arg(counts->active)
                            .arg(counts->wired)
                            .arg(counts->compressed)
                            .arg(counts->inactive)
                            .arg(counts->free);
        }
        QTEST(described, "counts");
    }

    void everyPrefixIsAbsentOrRight()
    {
        const QByteArray whole = captured();
        const std::uint64_t used = 24684084 - 23554696;
        int present = 0;
        for (qsizetype size = 0; size <= whole.size(); ++size) {
            const std::optional<PageCounts> counts = counted(whole.left(size));
            if (!counts)
                continue;
            ++present;
            QCOMPARE(counts->active + counts->wired + counts->compressed, used);
        }
        QCOMPARE(present, whole.size() - whole.indexOf("Buffers:") + 1);
    }

    void zramIsFoundAgainWhenSwapChanges()
    {
        const QTemporaryDir folder;
        const auto inFolder = [&folder](const char *name) {
            return folder.filePath(QString::fromLatin1(name));
        };
        const QString meminfo = inFolder("meminfo");
        QVERIFY(write(meminfo, Smallest + "SwapTotal: 0 kB\nZswap: 1 kB\n"));
        QVERIFY(write(inFolder("block/zram0/mm_stat"), "   9999   8888   10240   0   7 7 7 7 7\n"));
        QVERIFY(write(inFolder("block/zram1/mm_stat"), "   9999   damaged\n"));
        QVERIFY(write(inFolder("block/sda/mm_stat"), "   0   0   1024000   0\n"));
        ProcMeminfo source(meminfo.toStdString(), inFolder("block").toStdString());
        QCOMPARE(source.read()->compressed, std::uint64_t(11));

        QVERIFY(write(inFolder("block/zram1/mm_stat"), "   9999   8888   20480\n"));
        QVERIFY(write(inFolder("block/zram2/mm_stat"), "   9999   8888   40960\n"));
        QVERIFY(write(meminfo, Smallest + "SwapTotal: 8 kB\nZswap: 1 kB\n"));
        QCOMPARE(source.read()->compressed, std::uint64_t(71));

        QVERIFY(QDir(inFolder("block")).removeRecursively());
        QVERIFY(write(meminfo, Smallest + "SwapTotal: 0 kB\n"));
        QCOMPARE(source.read()->compressed, std::uint64_t(0));
    }

    void physicalMemoryWithoutTheFile()
    {
        const std::uint64_t total = ProcMeminfo().physicalMemory();
        const std::uint64_t pages = ProcMeminfo("/nonexistent").physicalMemory();
        QVERIFY(total > 0 && pages >= total);
        QVERIFY(pages < total + total / 4);
        QVERIFY(!ProcMeminfo("/nonexistent").read());
    }

    void agreesWithFree()
    {
        ProcMeminfo source;
        const auto total = source.physicalMemory();
        MemoryReader reader(total, std::make_unique<ProcMeminfo>());
        constexpr qint64 slack = 16 << 20; // what the other program needs itself
        const auto agrees = [&reader] {
            const auto before = static_cast<qint64>(reader.read()->usedBytes());
            const qint64 used = freeSays().second;
            const auto after = static_cast<qint64>(reader.read()->usedBytes());
            return used >= std::min(before, after) - slack
                && used <= std::max(before, after) + slack;
        };
        QCOMPARE(static_cast<qint64>(total), freeSays().first);
        QVERIFY(agrees() || agrees() || agrees()); // the machine may be busy
    }
};

METERKIN_TEST(MemoryReaderTest);

#include "MemoryReaderTest.moc"
