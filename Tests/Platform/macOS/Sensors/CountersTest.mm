#include "Platform/macOS/Sensors/PageCounters.h"
#include "Platform/macOS/Sensors/ProcessorTicks.h"
#include "Support/TestMain.h"

#include <QtTest>

#include <numeric>

namespace {

/// What the kernel answers, and what it has lent to the task.
struct Kernel {
    kern_return_t status = KERN_SUCCESS;
    natural_t coreCount = 0;
    std::optional<std::vector<integer_t>> ticks;
    std::vector<integer_t> pageWords; ///< of vm_statistics64, as many as this kernel knows
    std::size_t lentBytes = 0;
    int hostReferences = 0;
};
Kernel kernel;

} // namespace

mach_port_t mach_task_self_ = 77;
vm_size_t vm_page_size = 16384;

mach_port_t mach_host_self()
{
    ++kernel.hostReferences;
    return 101;
}

kern_return_t mach_port_deallocate(ipc_space_t, mach_port_name_t)
{
    --kernel.hostReferences;
    return KERN_SUCCESS;
}

kern_return_t host_processor_info(host_t, processor_flavor_t, natural_t *coreCount,
                                  processor_info_array_t *words, mach_msg_type_number_t *wordCount)
{
    *words = nullptr;
    if (kernel.status != KERN_SUCCESS || !kernel.ticks)
        return kernel.status;
    *coreCount = kernel.coreCount;
    *wordCount = static_cast<mach_msg_type_number_t>(kernel.ticks->size());
    kernel.lentBytes = *wordCount * sizeof(integer_t);
    // Exactly as large as told, so that the sanitizer sees a word read beyond.
    *words = static_cast<integer_t *>(std::malloc(kernel.lentBytes));
    std::copy(kernel.ticks->begin(), kernel.ticks->end(), *words);
    return KERN_SUCCESS;
}

kern_return_t vm_deallocate(vm_map_t, vm_address_t address, vm_size_t size)
{
    kernel.lentBytes -= size;
    std::free(reinterpret_cast<void *>(address));
    return KERN_SUCCESS;
}

kern_return_t host_statistics64(host_t, host_flavor_t, host_info64_t words,
                                mach_msg_type_number_t *wordCount)
{
    *wordCount = std::min(*wordCount, static_cast<mach_msg_type_number_t>(kernel.pageWords.size()));
    std::copy_n(kernel.pageWords.begin(), *wordCount, words);
    return kernel.status;
}

class CountersTest : public QObject {
    Q_OBJECT

private slots:
    void init() { kernel = {}; }

    void ticks()
    {
        // As many cores as have words of their own, whatever the kernel counts.
        const struct {
            natural_t coreCount;
            std::size_t wordCount;
            std::size_t cores;
        } cases[]{{0, 8, 0}, {3, 0, 0}, {2, 7, 1}, {4294967295, 9, 2}, {3, 40, 3}};
        std::vector<ProcessorCore> read(10);
        for (const auto &[coreCount, wordCount, cores] : cases) {
            kernel.coreCount = coreCount;
            kernel.ticks.emplace(wordCount);
            std::iota(kernel.ticks->begin(), kernel.ticks->end(), 1);
            QVERIFY(MacProcessorTicks().read(read));
            QCOMPARE(read.size(), cores);
            QCOMPARE(kernel.lentBytes, std::size_t(0));
        }
        QCOMPARE(read[2].number, 2U);
        const CoreTicks &core = read[2].ticks;
        const std::array<std::uint64_t, 4> values{core.user, core.system, core.idle, core.nice};
        QCOMPARE(values, (std::array<std::uint64_t, 4>{9, 10, 11, 12}));
        kernel.ticks.reset();
        QVERIFY(!MacProcessorTicks().read(read));
        kernel.status = KERN_FAILURE;
        QVERIFY(!MacProcessorTicks().read(read));
        QCOMPARE(kernel.hostReferences, 0);
    }

    void pages()
    {
        // As many words as the headers know, and those of a newer kernel.
        for (const std::size_t kernelWords : {38U, 48U}) {
            kernel.pageWords.assign(kernelWords, 77777);
            // Free (as many as the counter can tell), active, inactive, wired.
            std::copy_n(std::array{-1, 2, 3, 4}.begin(), 4, kernel.pageWords.begin());
            kernel.pageWords[32] = 5; // compressed
            const std::optional<PageCounts> counts = MacPageCounters().read();
            QVERIFY(counts);
            const std::array<std::uint64_t, 6> values{counts->pageSize, counts->free,
                                                      counts->active,   counts->inactive,
                                                      counts->wired,    counts->compressed};
            QCOMPARE(values, (std::array<std::uint64_t, 6>{16384, 4294967295, 2, 3, 4, 5}));
        }
        kernel.status = KERN_FAILURE;
        QVERIFY(!MacPageCounters().read());
        QVERIFY(MacPageCounters().physicalMemory() > 1'000'000);
    }
};

METERKIN_TEST(CountersTest);
#include "CountersTest.moc"
