#include "Sampling/MetricSampler.h"

#include <string>

namespace {

MemoryReader makeMemoryReader(std::unique_ptr<PageCounters> pages)
{
    const std::uint64_t physicalMemory = pages->physicalMemory();
    return MemoryReader(physicalMemory, std::move(pages));
}

} // namespace

MetricSampler::MetricSampler(std::unique_ptr<FanControllerConnection> fans,
                             std::unique_ptr<PageCounters> pages,
                             std::unique_ptr<ProcessorTicks> ticks)
    : m_smcReader(std::move(fans))
    , m_memoryReader(makeMemoryReader(std::move(pages)))
    , m_cpuReader(std::move(ticks))
{
}

MetricSample MetricSampler::sample()
{
    MetricSample sample;
    if (const std::optional<RawKey> count = m_smcReader.readRaw("FNum"))
        sample.fanCount = count->bytes[0];
    sample.fans = readFans(sample.fanCount);
    sample.memory = m_memoryReader.read();
    sample.processors = m_cpuReader.read();
    return sample;
}

QList<FanReading> MetricSampler::readFans(qint64 count)
{
    QList<FanReading> fans;
    for (qint64 i = 0; i < count; ++i) {
        const std::string fan = std::string("F").append(std::to_string(i));
        const std::optional<double> rpm = m_smcReader.readValue(fan + "Ac");
        if (!rpm)
            continue;
        const std::optional<double> minimum = m_smcReader.readValue(fan + "Mn");
        m_smcReader.loggedFanType = true; // two keys of one fan tell enough about the controller
        const std::optional<double> maximum = m_smcReader.readValue(fan + "Mx");
        fans.append({i, *rpm, minimum, maximum});
    }
    return fans;
}
