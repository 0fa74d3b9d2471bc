#pragma once

#include "Platform/FanControllerConnection.h"
#include "Platform/FourCharacterCode.h"
#include "Platform/PageCounters.h"
#include "Platform/ProcessorTicks.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

/// What the machine is to report next; absent is "cannot be read". Not to be changed while a sample
/// is under way.
struct Vitals {
    std::optional<double> fanSpeed = {}; ///< RPM; absent: no fans
    std::optional<double> memory = {}; ///< percent
    std::optional<double> cpuUsage = {}; ///< percent, from the second sample on

    int fans = 1; ///< all but the first stand still
    std::optional<float> fanRange = {}; ///< the highest speed of each; the lowest is a tenth of it
    std::uint64_t totalMemory = 100'000; ///< bytes
    std::size_t cores = 1; ///< all equally busy
    std::mutex *fanGate = nullptr; ///< while it is held, the fans do not answer
};

/// Speeds as little-endian floats.
class VitalFans : public FanControllerConnection {
public:
    explicit VitalFans(std::shared_ptr<const Vitals> vitals)
        : m_vitals(std::move(vitals))
    {
    }
    bool open() override { return true; }
    bool call(const ControllerRecord &request, ControllerRecord &reply) override
    {
        if (m_vitals->fanGate != nullptr)
            const std::lock_guard passed(*m_vitals->fanGate);
        if (!m_vitals->fanSpeed)
            return false;
        reply.dataSize = 4;
        reply.dataType = fourCharacterCode("flt ");
        if (request.key == fourCharacterCode("FNum")) {
            reply.data[0] = static_cast<std::uint8_t>(m_vitals->fans);
            return true;
        }
        const bool isFirst = (request.key >> 16U & 0xffU) == '0';
        float value = isFirst ? static_cast<float>(*m_vitals->fanSpeed) : 0.0F;
        if (const auto field = request.key & 0xffffU; field != AcField) {
            if (!m_vitals->fanRange)
                return false;
            value = field == MnField ? *m_vitals->fanRange / 10.0F : *m_vitals->fanRange;
        }
        std::memcpy(reply.data.data(), &value, sizeof value);
        return true;
    }
    void close() override { }

private:
    static constexpr std::uint32_t AcField = fourCharacterCode("F0Ac") & 0xffffU;
    static constexpr std::uint32_t MnField = fourCharacterCode("F0Mn") & 0xffffU;
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
