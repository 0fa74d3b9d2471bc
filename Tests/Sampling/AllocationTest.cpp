#include "AllocationCounter.h"
#include "Platform/Linux/ProcMeminfo.h"
#include "Platform/Linux/ProcStat.h"
#include "Sampling/CPUReader.h"
#include "Sampling/MemoryReader.h"
#include "Support/TestMain.h"

#include <QtTest>

class AllocationTest : public QObject {
    Q_OBJECT

private slots:
    void samplesAllocateNothing()
    {
        const std::optional<int> control = allocationsOf([] { QByteArray(100, 'x').clear(); });
        if (!control)
            QSKIP("built with a sanitizer");
        QCOMPARE(*control, 1);

        CPUReader processors(std::make_unique<ProcStat>());
        MemoryReader memory(1, std::make_unique<ProcMeminfo>());
        std::optional<CPUInfo> published; // kept from one sample to the next, as a listener does
        const auto sample = [&] {
            published = processors.read();
            QVERIFY(published && memory.read());
        };
        sample();
        sample(); // the second of two lists
        QCOMPARE(allocationsOf([&sample] {
                     for (int i = 0; i < 50; ++i)
                         sample();
                 }),
                 std::optional(0));
    }
};

METERKIN_TEST(AllocationTest);

#include "AllocationTest.moc"
