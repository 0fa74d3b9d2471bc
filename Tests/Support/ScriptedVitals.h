#pragma once

#include "Platform/FanSource.h"
#include "Platform/PageCounters.h"
#include "Platform/ProcessorTicks.h"

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
    std::shared_ptr<Gate> cpuGate = std::make_shared<Gate>();
};

class VitalFans : public FanSource {
public:
    explicit VitalFans(std::shared_ptr<const Vitals> vitals)
        : m_vitals(std::move(vitals))
    {
    }
    FanSample read() override
    {
        m_vitals->fanGate->pass();
        FanSample sample;
        sample.count = m_vitals->fanSpeed ? m_vitals->fans : 0;
        for (qint64 i = 0; i < sample.count; ++i) {
            FanReading fan{i, i == 0 ? *m_vitals->fanSpeed : 0.0, {}, m_vitals->fanRange};
            if (fan.max)
                fan.min = *fan.max / 10.0;
            sample.fans.append(fan);
        }
        return sample;
    }

private:
    std::shared_ptr<const Vitals> m_vitals;
};

class VitalPages : public PageCounters {
public:
    explicit VitalPages(std::shared_ptr<const Vitals> vitals)
        : m_vitals(std::move(vitals))
    {
    }
    std::optional<PageCounts> read() override
    {
        m_vitals->memoryGate->pass();
        if (!m_vitals->memory)
            return std::nullopt;
        const double pages = *m_vitals->memory / 100.0 * static_cast<double>(m_vitals->totalMemory);
        return PageCounts{.pageSize = 1, .active = static_cast<std::uint64_t>(std::llround(pages))};
    }
    std::uint64_t physicalMemory() override { return m_vitals->totalMemory; }

private:
    std::shared_ptr<const Vitals> m_vitals;
};

class VitalTicks : public ProcessorTicks {
public:
    explicit VitalTicks(std::shared_ptr<const Vitals> vitals)
        : m_vitals(std::move(vitals))
    {
    }
    bool read(std::vector<ProcessorCore> &cores) override
    {
        m_vitals->cpuGate->pass();
        if (!m_vitals->cpuUsage)
            return false;
        const double busy = *m_vitals->cpuUsage / 100.0 * static_cast<double>(Period);
        const auto busyTicks = static_cast<std::uint64_t>(std::llround(busy));
        m_sum.user += busyTicks;
        m_sum.idle += Period - busyTicks;
        cores.clear();
        for (std::size_t core = 0; core < m_vitals->cores; ++core)
            cores.push_back({static_cast<std::uint32_t>(core), m_sum});
        return true;
    }

private:
    static constexpr std::uint64_t Period = 100'000; ///< ticks between two samples
    std::shared_ptr<const Vitals> m_vitals;
    CoreTicks m_sum;
};
