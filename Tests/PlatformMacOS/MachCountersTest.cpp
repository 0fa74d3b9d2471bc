#include "Fakes/CallLog.h"
#include "Fakes/FakeMach.h"
#include "Platform/macOS/MachPageCounters.h"
#include "Platform/macOS/MachProcessorTicks.h"
#include "Platform/macOS/PhysicalMemory.h"
#include "Sampling/CPUReader.h"
#include "Sampling/MemoryReader.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <numeric>

#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString Asked = QStringLiteral("host_processor_info 101 2");

QString freed(int bytes)
{
    return QStringLiteral("vm_deallocate 77 %1").arg(bytes);
}

/// How a process ends that does this, and what it says on its standard error.
std::pair<int, QByteArray> endOf(const std::function<void()> &action)
{
    int ends[2];
    if (pipe(ends) != 0)
        return {};
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        action();
        _exit(0);
    }
    close(ends[1]);
    QFile file;
    if (!file.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return {};
    const QByteArray text = file.readAll();
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFSIGNALED(status) ? WTERMSIG(status) : 0, text};
}

} // namespace

class MachCountersTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        FakeMach::kernel() = {};
        CallLog::take();
    }

    void usage()
    {
        FakeMach &kernel = FakeMach::kernel();
        CPUReader reader(std::make_unique<MachProcessorTicks>());
        kernel.coreCount = 2;
        kernel.ticks = {100, 50, 800, 50, 1, 2, 3, 4};
        const std::optional<CPUInfo> first = reader.read();
        QVERIFY(first);
        QCOMPARE(first->perCoreUsage, QList<double>({0.0, 0.0}));
        QCOMPARE(CallLog::take(), QStringList({Asked, freed(32)}));

        kernel.ticks = {9, 9, 9, 9};
        kernel.status = KERN_FAILURE;
        QVERIFY(!reader.read());
        kernel.status = KERN_SUCCESS;
        kernel.givesArray = false;
        QVERIFY(!reader.read());
        QCOMPARE(CallLog::take(), QStringList({Asked, Asked}));

        kernel.givesArray = true;
        kernel.ticks = {160, 70, 960, 60, 1, 2, 3, 4};
        const std::optional<CPUInfo> second = reader.read();
        QVERIFY(second);
        QCOMPARE(second->perCoreUsage, QList<double>({36.0, 0.0}));
        QCOMPARE(second->aggregateUsage, 18.0);
    }

    void coresWithinTheirWords()
    {
        const struct {
            natural_t coreCount;
            std::size_t wordCount;
            std::size_t cores;
        } cases[]{{0, 0, 0}, {0, 8, 0}, {3, 0, 0}, {2, 7, 1}, {4294967295, 9, 2}, {3, 40, 3}};
        MachProcessorTicks source;
        std::vector<ProcessorCore> cores(10);
        const ProcessorCore *const storage = cores.data();
        for (const auto &[coreCount, wordCount, expected] : cases) {
            FakeMach::kernel().coreCount = coreCount;
            FakeMach::kernel().ticks.resize(wordCount);
            std::iota(FakeMach::kernel().ticks.begin(), FakeMach::kernel().ticks.end(), 1);
            QVERIFY(source.read(cores));
            QCOMPARE(cores.size(), expected);
            for (std::uint32_t i = 0; i < expected; ++i) {
                QCOMPARE(cores[i].number, i);
                QCOMPARE(cores[i].ticks.nice, std::uint64_t(4 * i + 4));
            }
            QCOMPARE(CallLog::take(), QStringList({Asked, freed(static_cast<int>(wordCount) * 4)}));
        }
        QCOMPARE(cores.data(), storage);
    }

    void negativeCounterIsFatal()
    {
        FakeMach::kernel().coreCount = 2;
        for (std::size_t i = 0; i < 4; ++i) {
            FakeMach::kernel().ticks.assign(8, 2147483647);
            FakeMach::kernel().ticks[4 + i] = -2147483647 - 1;
            const auto [signal, text] = endOf([] {
                std::vector<ProcessorCore> cores;
                MachProcessorTicks().read(cores);
            });
            QCOMPARE(signal, SIGABRT);
            QVERIFY2(text.contains("negative") && text.count('\n') == 1, text);
        }
    }

    void pages_data()
    {
        QTest::addColumn<std::size_t>("kernelWords");
        QTest::newRow("as in the headers") << std::size_t(38);
        QTest::newRow("newer kernel") << std::size_t(48);
    }
    void pages()
    {
        QFETCH(const std::size_t, kernelWords);
        FakeMach &kernel = FakeMach::kernel();
        kernel.pageWords.assign(kernelWords, 77777);
        kernel.pageWords[0] = 1000;
        kernel.pageWords[1] = 200000;
        kernel.pageWords[2] = 150000;
        kernel.pageWords[3] = 100000;
        kernel.pageWords[32] = 50000;
        auto source = std::make_unique<MachPageCounters>();
        QCOMPARE(source->physicalMemory(), physicalMemory());
        MemoryReader reader(17179869184, std::move(source));

        std::optional<MemoryInfo> info = reader.read();
        QVERIFY(info);
        QCOMPARE(info->activeBytes, 3276800000U);
        QCOMPARE(info->wiredBytes, 1638400000U);
        QCOMPARE(info->compressedBytes, 819200000U);
        QCOMPARE(info->inactiveBytes, 2457600000U);
        QCOMPARE(info->freeBytes, 16384000U);
        QCOMPARE(info->totalBytes, 17179869184U);

        kernel.pageWords[0] = -1; // as many pages as the counter can tell
        const vm_size_t pageSize = std::exchange(vm_page_size, 4096);
        info = reader.read();
        vm_page_size = pageSize;
        QVERIFY(info);
        QCOMPARE(info->activeBytes, 819200000U);
        QCOMPARE(info->freeBytes, 17592186040320U);

        kernel.status = KERN_FAILURE;
        QVERIFY(!reader.read());
        QCOMPARE(CallLog::take(), QStringList(3, QStringLiteral("host_statistics64 101 4 40")));
    }

    void hostIsHeldOnce()
    {
        {
            MachProcessorTicks ticks;
            MachPageCounters pages;
            std::vector<ProcessorCore> cores;
            for (int i = 0; i < 3; ++i) {
                ticks.read(cores);
                pages.read();
            }
            QCOMPARE(FakeMach::kernel().hostReferences, 2);
        }
        QCOMPARE(FakeMach::kernel().hostReferences, 0);
    }
};

METERKIN_TEST(MachCountersTest);
#include "MachCountersTest.moc"
