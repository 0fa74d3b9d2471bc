#include "Platform/Linux/Sensors/PageCounters.h"
#include "Platform/Linux/Sensors/ProcessorTicks.h"
#include "Sampling/CPUReader.h"
#include "Sampling/MemoryReader.h"
#include "Support/Files.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

static QByteArray meminfo(const char *total, const char *free, const char *available)
{
    return QByteArray("MemTotal: ") + total + " kB\nMemFree: " + free
        + " kB\nMemAvailable: " + available + " kB\n";
}
static const QByteArray Smallest = meminfo("1000", "100", "400");

/// The readers over files like those in /proc.
class KernelFilesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("meterkin.*=false")); }

    void usage()
    {
        const QByteArray zeros("cpu0 0 0 0 0\ncpu1 0 0 0 0\ncpu2 0 0 0 0\n");
        const QByteArray good("cpu1 1 2 3 4 5 6 7 8 9 10\n"); // busy for 27 of 36
        const std::array<QByteArray, 3> cases[]{
            {"cpu0 100 50 50 800\n", "cpu0 160 60 70 960\n", "36: 36"},
            {"", "cpu0 90 0 0 10\n", "0: 0"},
            {"cpu0 9 0 0 91\n", "cpu0 9 0 0 91\n", "0: 0"},
            {zeros, "cpu0 2 0 0 8\ncpu2 3 1 0 6\n", "30: 20 40"}, // one goes offline
            {"cpu0 0 0 0 0\ncpu2 0 0 0 0\n", "cpu0 0 0 3 7\ncpu1 9 0 0 1\ncpu2 6 0 0 4\n",
             "30: 30 0 60"}, // and online
            {"cpu0 0 0 0 500\n", "cpu0 10 0 0 400\n", "100: 100"}, // idle time decreases
            {zeros, "cpu0 " + QByteArray("2305843009213693951 ").repeated(4) + '\n', "75: 75"},
            {zeros, "cpu  9 9 9 9\n" + good + "intr 5\ncpu2 1 2 3 4\n", "75: 75"},
            {zeros, "cpu0 1 2 1 4\ncpu1 1 2 3 1 5 \n", "50: 50 50"}, // old kernels
            {zeros, good + good, ""},
        };
        for (const auto &[before, now, expected] : cases)
            QCOMPARE(usageBetween(before, now), expected);
        const QByteArray damaged(
            "cpu0 1 2 3|cpu0 1 -2 3 4|cpu0 1 2 3 4 -5|cpu0 1 2 3 4x|cpuX 1 2 3 4|"
            "cpu-1 1 2 3 4|cpu0 99999999999999999999 2 3 4|cpu4294967296 1 2 3 4|"
            "cpu0 0 0 0 18446744073709551615 1");
        for (const QByteArray &line : damaged.split('|'))
            QVERIFY2(usageBetween(zeros, line + '\n' + good) == "75: 75", line);
        for (qsizetype size = 0; size < good.size(); ++size)
            QCOMPARE(usageBetween(zeros, "cpu0 1 0 0 3\n" + good.left(size)), "25: 25");
    }

    void memory()
    {
        const std::pair<QByteArray, QByteArray> cases[]{
            // active wired compressed inactive free
            {Smallest + "SUnreclaim: 10 kB\nKernelStack: 20 kB\nPageTables: 30 kB\n"
                 + "SecPageTables: 40 kB\nPercpu: 50 kB\nZswap: 60 kB\nSlab: 99 kB\n",
             "390 150 60 300 100"},
            {Smallest + "SUnreclaim: 500 kB\nZswap: 200 kB\n", "0 500 100 300 100"},
            {"Nonsense\n: 5\nOther: -1 kB\n\n" + Smallest, "600 0 0 300 100"},
            {"MemTotal: 9 kB\nMemFree: 1 kB\nBuffers: 5 kB\n", "8 0 0 0 1"}, // old kernel
            {meminfo("1000", "300", "200"), "800 0 0 0 300"},
            {meminfo("1000", "100", "5000"), "900 0 0 0 100"}, // available of the host
            {meminfo("0", "0", "0"), ""},
            {meminfo("1000", "1001", "400"), ""},
            {meminfo("1000", "100", "x") + "Buffers: 1 kB\n", ""},
            {"MemTotal: 1000 kB\nMemAvailable: 400 kB\n", ""},
            {Smallest + "Zswap: 18446744073709551615 kB\n", ""},
        };
        for (const auto &[text, expected] : cases)
            QCOMPARE(memoryIn(text), expected);
        for (qsizetype size = 0; size < Smallest.size(); ++size)
            QCOMPARE(memoryIn(Smallest.left(size)), "");
    }

    void zramIsFoundAgainWhenSwapChanges()
    {
        put("zram0/mm_stat", "   9999   8888   10240   0   7 7 7 7 7\n");
        put("zram1/mm_stat", "   9999   damaged\n");
        LinuxPageCounters source(put("meminfo", Smallest + "SwapTotal: 8 kB\nZswap: 1 kB\n"),
                                 m_folder.path().toStdString());
        QCOMPARE(source.read()->compressed, std::uint64_t(11));
        put("zram2/mm_stat", "   9999   8888   40960\n");
        put("meminfo", Smallest + "SwapTotal: 16 kB\nZswap: 1 kB\n");
        QCOMPARE(source.read()->compressed, std::uint64_t(51));
        put("meminfo", Smallest + "SwapTotal: 0 kB\nZswap: 1 kB\n");
        QCOMPARE(source.read()->compressed, std::uint64_t(1));
    }

    void thousandCoresInAFileThatFailedBefore()
    {
        const QString path = m_folder.filePath(QStringLiteral("late"));
        LinuxProcessorTicks source(path.toStdString());
        std::vector<ProcessorCore> cores;
        QVERIFY(!source.read(cores));
        QByteArray text;
        for (int i = 0; i < 1024; ++i)
            text += "cpu" + QByteArray::number(i) + " 1 0 0 9876543210 0 0 0 0 0 0\n";
        put("late", text + "intr " + QByteArray(50000, '0') + '\n');
        QVERIFY(source.read(cores));
        QCOMPARE(cores.size(), std::size_t(1024));
        QVERIFY(QFile::resize(path, 1 << 30)); // more than the largest buffer
        QVERIFY(!source.read(cores));
        put("late", "cpu0 5 2 3 4\n");
        QVERIFY(source.read(cores) && cores.size() == 1 && cores.front().ticks.user == 5);
    }

private:
    /// The path of a file with this text.
    std::string put(const char *name, const QByteArray &text) const
    {
        const QString path = m_folder.filePath(QLatin1String(name));
        return write(path, text) ? path.toStdString() : std::string();
    }

    /// "mean: usage of each core" between two texts of a file that fails once in the meantime.
    QByteArray usageBetween(const QByteArray &before, const QByteArray &now) const
    {
        CPUReader reader(std::make_unique<LinuxProcessorTicks>(put("stat", before)));
        CPUInfo info;
        reader.read(info);
        put("stat", "");
        reader.read(info);
        put("stat", now);
        if (!reader.read(info))
            return {};
        QByteArray text = QByteArray::number(info.aggregateUsage) + ':';
        for (const double usage : std::as_const(info.perCoreUsage))
            text += ' ' + QByteArray::number(usage);
        return text;
    }

    /// "active wired compressed inactive free" in kB.
    QByteArray memoryIn(const QByteArray &text) const
    {
        MemoryReader reader(0, std::make_unique<LinuxPageCounters>(put("meminfo", text), "/none"));
        QByteArrayList list;
        if (const std::optional<MemoryInfo> info = reader.read())
            for (const auto bytes : {info->activeBytes, info->wiredBytes, info->compressedBytes,
                                     info->inactiveBytes, info->freeBytes})
                list += QByteArray::number(qulonglong(bytes / 1024));
        return list.join(' ');
    }

    QTemporaryDir m_folder;
};

METERKIN_TEST(KernelFilesTest);
#include "KernelFilesTest.moc"
