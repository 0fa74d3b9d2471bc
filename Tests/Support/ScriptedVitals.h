#pragma once

#include "Platform/FanControllerConnection.h"
#include "Platform/FourCharacterCode.h"
#include "Platform/PageCounters.h"
#include "Platform/ProcessorTicks.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

/// What the machine is to report next; absent is "cannot be read". Not to be changed while a sample
/// is under way.
struct Vitals {
    std::optional<double> fanSpeed = {}; ///< RPM; absent: no fans
    std::optional<double> memory = {}; ///< percent
    std::optional<double> cpuUsage = {}; ///< percent, from the second sample on
};

/// One fan, its speed as a little-endian float.
class VitalFans : public FanControllerConnection {
public:
    explicit VitalFans(std::shared_ptr<const Vitals> vitals)
        : m_vitals(std::move(vitals))
    {
    }
    bool open() override { return true; }
    bool call(const ControllerRecord &request, ControllerRecord &reply) override
    {
        if (!m_vitals->fanSpeed)
            return false;
        reply.dataSize = 4;
        reply.dataType = fourCharacterCode("flt ");
        const auto speed = static_cast<float>(*m_vitals->fanSpeed);
        std::memcpy(reply.data.data(), &speed, sizeof speed);
        if (request.key == fourCharacterCode("FNum"))
            reply.data[0] = 1;
        return true;
    }
    void close() override { }

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
        if (!m_vitals->memory)
            return std::nullopt;
        const double pages = *m_vitals->memory / 100.0 * static_cast<double>(Total);
        return PageCounts{.pageSize = 1, .active = static_cast<std::uint64_t>(std::llround(pages))};
    }
    std::uint64_t physicalMemory() override { return Total; }

private:
    static constexpr std::uint64_t Total = 100'000;
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
        cores = {{0, m_sum}};
        return true;
    }

private:
    static constexpr std::uint64_t Period = 100'000; ///< ticks between two samples
    std::shared_ptr<const Vitals> m_vitals;
    CoreTicks m_sum;
};
