#pragma once

#include "Platform/MetricSources.h"

#include <atomic>
#include <cmath>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

/// Can make the reads of one source hang.
class Gate {
public:
    /// Until open(), which the same thread calls.
    void close() { m_mutex.lock(); }
    void open() { m_mutex.unlock(); }
    /// Reads that have begun.
    int readCount() const { return m_readCount; }
    /// The source's side.
    void pass()
    {
        ++m_readCount;
        const std::lock_guard passed(m_mutex);
    }

private:
    std::mutex m_mutex;
    std::atomic<int> m_readCount = 0;
};

/// What the machine reports next; absent is "cannot be read". Not to be changed while a sample is
/// taken.
struct Vitals {
    std::optional<double> fanSpeed = {}; ///< RPM; absent: no fans
    std::optional<double> memory = {}; ///< percent
    std::optional<double> cpuUsage = {}; ///< percent, from the second sample on

    int fans = 1; ///< all but the first stand still
    std::optional<double> fanRange = {}; ///< the highest speed of each; the lowest is a tenth of it
    std::uint64_t totalMemory = 100'000; ///< bytes
    std::size_t cores = 1; ///< all equally busy

    std::shared_ptr<Gate> fanGate = std::make_shared<Gate>();
    std::shared_ptr<Gate> memoryGate = std::make_shared<Gate>();
};

/// A source that reports them.
template <typename Source> struct VitalSource : Source {
    explicit VitalSource(std::shared_ptr<const Vitals> reported)
        : vitals(std::move(reported))
    {
    }
    std::shared_ptr<const Vitals> vitals;
};

struct VitalFans : VitalSource<FanSource> {
    using VitalSource::VitalSource;
    void read(FanSample &sample) override
    {
        vitals->fanGate->pass();
        sample.fans.clear();
        sample.count = vitals->fanSpeed ? vitals->fans : 0;
        for (qint64 i = 0; i < sample.count; ++i) {
            FanReading fan{i, i == 0 ? *vitals->fanSpeed : 0.0, {}, vitals->fanRange};
            if (fan.max)
                fan.min = *fan.max / 10.0;
            sample.fans.append(fan);
        }
    }
};

struct VitalPages : VitalSource<PageCounters> {
    using VitalSource::VitalSource;
    std::optional<PageCounts> read() override
    {
        vitals->memoryGate->pass();
        if (!vitals->memory)
            return std::nullopt;
        const double pages = *vitals->memory / 100.0 * static_cast<double>(vitals->totalMemory);
        return PageCounts{.pageSize = 1, .active = static_cast<std::uint64_t>(std::llround(pages))};
    }
    std::uint64_t physicalMemory() override { return vitals->totalMemory; }
};

struct VitalTicks : VitalSource<ProcessorTicks> {
    using VitalSource::VitalSource;
    bool read(std::vector<ProcessorCore> &cores) override
    {
        if (!vitals->cpuUsage)
            return false;
        constexpr double Period = 100'000; // ticks between two samples
        const auto busy =
            static_cast<std::uint64_t>(std::llround(*vitals->cpuUsage * Period / 100));
        sum.user += busy;
        sum.idle += static_cast<std::uint64_t>(Period) - busy;
        cores.clear();
        for (std::size_t core = 0; core < vitals->cores; ++core)
            cores.push_back({static_cast<std::uint32_t>(core), sum});
        return true;
    }
    CoreTicks sum;
};

inline MetricSources makeSources(const std::shared_ptr<const Vitals> &vitals)
{
    return {std::make_unique<VitalFans>(vitals), std::make_unique<VitalPages>(vitals),
            std::make_unique<VitalTicks>(vitals)};
}
