// A sanitizer brings an allocator of its own.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

#include "Platform/Linux/Sensors/PageCounters.h"
#include "Platform/Linux/Sensors/ProcessorTicks.h"
#include "Sampling/CPUReader.h"
#include "Sampling/MemoryReader.h"
#include "Support/TestMain.h"

#include <QtTest>

static thread_local int allocations = 0;

// The standard library's operator new and the lists of Qt come through here.
extern "C" {

void *__libc_malloc(std::size_t size); // NOLINT(bugprone-reserved-identifier): the library's own

void *malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

} // extern "C"

class AllocationTest : public QObject {
    Q_OBJECT

private slots:
    void samplesAllocateNothing()
    {
        CPUReader processors(std::make_unique<LinuxProcessorTicks>());
        MemoryReader memory(1, std::make_unique<LinuxPageCounters>());
        std::optional<CPUInfo> published; // kept from one sample to the next, as a listener does
        const auto sample = [&] {
            published = processors.read();
            QVERIFY(published && memory.read());
        };
        int before = allocations;
        sample();
        sample(); // the second of two lists
        QVERIFY(allocations > before);
        before = allocations;
        for (int i = 0; i < 50; ++i)
            sample();
        QCOMPARE(allocations - before, 0);
    }
};

METERKIN_TEST(AllocationTest);


#endif
#include "AllocationTest.moc"
