#include "Platform/Linux/ProcStat.h"
#include "Sampling/CPUReader.h"
#include "Support/TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

/// "number:user,system,idle,nice" of each core, or "failed".
QString described(const QByteArray &text)
{
    std::vector<ProcessorCore> cores;
    if (!ProcStat::parse(std::string_view(text.data(), std::size_t(text.size())), cores))
        return QStringLiteral("failed");
    QStringList list;
    for (const auto &[number, ticks] : cores)
        list += QStringLiteral("%1:%2,%3,%4,%5")
                    .arg(number)
                    .arg(ticks.user)
                    .arg(ticks.system)
                    .arg(ticks.idle)
                    .arg(ticks.nice);
    return list.join(u' ');
}

/// Busy and idle ticks of every core, worked out with nothing of the reader's.
QList<std::pair<double, double>> kernelTicks()
{
    QList<std::pair<double, double>> ticks;
    for (const QByteArray &line : contents(QStringLiteral("/proc/stat")).split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (!line.startsWith("cpu") || words.first() == "cpu")
            continue;
        const double idle = words[4].toDouble() + words[5].toDouble();
        double all = 0;
        for (int i = 1; i <= 8; ++i)
            all += words[i].toDouble();
        ticks.append({all - idle, idle});
    }
    return ticks;
}

} // namespace

class ProcStatTest : public QObject {
    Q_OBJECT

private slots:
    void parse_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("cores");
        const auto row = [](const char *name, const QByteArray &text, const char *cores) {
            QTest::newRow(name) << text << QString::fromLatin1(cores);
        };
        const QByteArray good = "cpu1 1 2 3 4 5 6 7 8 9 10\n";

        row("all columns", "cpu  9 9 9 9\n" + good + "intr 5\n", "1:1,24,9,2");
        row("four columns", "cpu0 1 2 3 4\n", "0:1,3,4,2");
        row("five columns", "cpu0 1 2 3 4 5 \n", "0:1,3,9,2");
        row("three columns", "cpu0 1 2 3\n" + good, "1:1,24,9,2");
        row("gap in the numbers", "cpu0 1 1 1 1\ncpu7 2 2 2 2\n", "0:1,1,1,1 7:2,2,2,2");
        row("empty", "", "failed");
        row("only the sum", "cpu  1 2 3 4\n", "failed");
        row("sum with tab", "cpu\t7 1 2 3 4\n", "failed");
        row("no line's end", good + "cpu2 1 2 3 4", "1:1,24,9,2");
        row("other lines first", "intr 5\n" + good, "failed");
        row("cores after others", good + "intr 5\ncpu2 1 2 3 4\n", "1:1,24,9,2");
        row("negative", "cpu0 1 -2 3 4\n" + good, "1:1,24,9,2");
        row("negative late", "cpu0 1 2 3 4 -5\n" + good, "1:1,24,9,2");
        row("words", "cpu0 one 2 3 4\n" + good, "1:1,24,9,2");
        row("number and word", "cpu0 1 2 3 4x\n" + good, "1:1,24,9,2");
        row("no number", "cpuX 1 2 3 4\ncpu-1 1 2 3 4\n" + good, "1:1,24,9,2");
        row("20 digits", "cpu0 99999999999999999999 2 3 4\n" + good, "1:1,24,9,2");
        row("sum would overflow", "cpu0 0 0 0 18446744073709551615 1\n" + good, "1:1,24,9,2");
        row("core number too large", "cpu4294967296 1 2 3 4\n", "failed");
        row("core twice", good + good, "failed");
        row("zero byte", QByteArray("cpu0 1\0 2 3 4\n", 14) + good, "1:1,24,9,2");
        row("long line", "cpu0 1 2 3 4" + QByteArray(100000, ' ') + "5\n" + good,
            "0:1,3,9,2 1:1,24,9,2");
    }
    void parse()
    {
        QFETCH(QByteArray, text);
        QTEST(described(text), "cores");
    }

    void everyPrefixHoldsTheFullLinesOnly()
    {
        const QByteArray whole = contents(QStringLiteral(FIXTURES "/stat-2-cores.txt"));
        const QStringList cores = described(whole).split(u' ');
        QCOMPARE(cores.size(), 2);
        for (qsizetype size = 0; size < whole.size(); ++size) {
            const QByteArray prefix = whole.left(size);
            const qsizetype full = std::clamp<qsizetype>(prefix.count('\n') - 1, 0, 2);
            const QString expected =
                full == 0 ? QStringLiteral("failed") : cores.first(full).join(u' ');
            QCOMPARE(described(prefix), expected);
        }
    }

    void thousandCoresAreAllRead()
    {
        QByteArray text = "cpu  1 2 3 4\n";
        for (int i = 0; i < 1024; ++i)
            text += "cpu" + QByteArray::number(i) + ' ' + QByteArray::number(i * 1000003LL)
                + " 0 0 9876543210 0 0 0 0 0 0\n";
        const QString path = m_folder.filePath(QStringLiteral("large"));
        QVERIFY(write(path, text + "intr " + QByteArray(50000, '0') + '\n'));
        ProcStat source(path.toStdString());
        std::vector<ProcessorCore> cores;
        QVERIFY(source.read(cores));
        QCOMPARE(cores.size(), std::size_t(1024));
        QCOMPARE(cores.back().number, 1023U);
        QCOMPARE(cores.back().ticks.user, std::uint64_t(1023 * 1000003LL));
    }

    void failedFileIsOpenedAnew()
    {
        const QString path = m_folder.filePath(QStringLiteral("stat"));
        ProcStat source(path.toStdString());
        std::vector<ProcessorCore> cores;
        QVERIFY(!source.read(cores));
        QVERIFY(QDir().mkdir(path)); // opens, but cannot be read
        QVERIFY(!source.read(cores));
        QVERIFY(QDir().rmdir(path));
        QVERIFY(write(path, "cpu0 1 2 3 4\n"));
        QVERIFY(source.read(cores));
        QVERIFY(write(path, "cpu0 5 2 3 4\ncpu1 1 2 3 4\n"));
        QVERIFY(source.read(cores));
        QCOMPARE(cores.size(), std::size_t(2));
        QCOMPARE(cores.front().ticks.user, std::uint64_t(5));
    }

    /// The readings of the test enclose those of the reader, so its usage lies between two bounds.
    void agreesWithTheKernel()
    {
        CPUReader reader(std::make_unique<ProcStat>());
        bool agrees = false;
        // Waiting time may be taken back in between, which breaks the bounds: once more then.
        for (int attempt = 0; attempt < 5 && !agrees; ++attempt) {
            const auto beforeFirst = kernelTicks();
            QVERIFY(reader.read());
            const auto afterFirst = kernelTicks();
            auto beforeSecond = afterFirst;
            while (beforeSecond[0].first + beforeSecond[0].second
                   < afterFirst[0].first + afterFirst[0].second + 20)
                beforeSecond = kernelTicks();
            const std::optional<CPUInfo> info = reader.read();
            const auto afterSecond = kernelTicks();

            QVERIFY(info);
            QCOMPARE(info->perCoreUsage.size(), afterSecond.size());
            agrees = true;
            for (qsizetype i = 0; i < afterSecond.size(); ++i) {
                const double leastBusy = beforeSecond[i].first - afterFirst[i].first;
                const double leastIdle = beforeSecond[i].second - afterFirst[i].second;
                const double mostBusy = afterSecond[i].first - beforeFirst[i].first;
                const double mostIdle = afterSecond[i].second - beforeFirst[i].second;
                const double usage = info->perCoreUsage[i];
                agrees = agrees && usage >= leastBusy / (leastBusy + mostIdle) * 100.0 - 1e-9
                    && usage <= mostBusy / (mostBusy + leastIdle) * 100.0 + 1e-9;
            }
        }
        QVERIFY(agrees);
    }

private:
    QTemporaryDir m_folder;
};

METERKIN_TEST(ProcStatTest);

#include "ProcStatTest.moc"
