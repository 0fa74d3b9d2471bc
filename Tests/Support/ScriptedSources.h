#pragma once

#include "Platform/FanControllerConnection.h"
#include "Platform/FourCharacterCode.h"
#include "Platform/PageCounters.h"
#include "Platform/ProcessorTicks.h"
#include "Sampling/MetricCollector.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// What a scripted source answers: set by the test, read on any thread, and held back on request.
template <typename Answer> class Script {
public:
    void set(Answer answer)
    {
        const std::lock_guard lock(m_mutex);
        m_answer = std::move(answer);
    }
    /// Reads that have begun.
    int readCount() const
    {
        const std::lock_guard lock(m_mutex);
        return m_readCount;
    }
    /// From now on every read hangs until release().
    void hold()
    {
        const std::lock_guard lock(m_mutex);
        m_isHeld = true;
    }
    void release()
    {
        const std::lock_guard lock(m_mutex);
        m_isHeld = false;
        m_changed.notify_all();
    }
    /// True as soon as a read hangs; false when none does for five seconds.
    bool waitForHeldRead()
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(5),
                                  [this] { return m_heldReads > 0; });
    }
    /// The source's side.
    Answer read()
    {
        std::unique_lock lock(m_mutex);
        ++m_readCount;
        ++m_heldReads;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_isHeld; });
        --m_heldReads;
        return m_answer;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Answer m_answer{};
    int m_readCount = 0;
    int m_heldReads = 0;
    bool m_isHeld = false;
};

using Cores = std::vector<ProcessorCore>;
using TicksScript = Script<std::optional<Cores>>;
using PagesScript = Script<std::optional<PageCounts>>;

/// The value of one key of the scripted fan controller.
struct ScriptedKey {
    std::string type = "flt ";
    std::array<std::uint8_t, 4> bytes{};
    std::uint32_t size = 4;

    bool operator==(const ScriptedKey &) const = default;
};
/// Absent: the machine has no controller. A key that is not there cannot be read.
using FanKeys = std::optional<std::map<std::string, ScriptedKey>>;
using FansScript = Script<FanKeys>;

class ScriptedTicks : public ProcessorTicks {
public:
    explicit ScriptedTicks(std::shared_ptr<TicksScript> script)
        : m_script(std::move(script))
    {
    }
    bool read(Cores &cores) override
    {
        const std::optional<Cores> answer = m_script->read();
        cores = answer.value_or(Cores());
        return answer.has_value();
    }

private:
    std::shared_ptr<TicksScript> m_script;
};

class ScriptedPages : public PageCounters {
public:
    ScriptedPages(std::shared_ptr<PagesScript> script, std::uint64_t physicalMemory)
        : m_script(std::move(script))
        , m_physicalMemory(physicalMemory)
    {
    }
    std::optional<PageCounts> read() override { return m_script->read(); }
    std::uint64_t physicalMemory() override { return m_physicalMemory; }

private:
    std::shared_ptr<PagesScript> m_script;
    std::uint64_t m_physicalMemory;
};

class ScriptedFans : public FanControllerConnection {
public:
    explicit ScriptedFans(std::shared_ptr<FansScript> script)
        : m_script(std::move(script))
    {
    }
    bool open() override { return m_script->read().has_value(); }
    bool call(const ControllerRecord &request, ControllerRecord &reply) override
    {
        const FanKeys keys = m_script->read();
        const auto found = std::find_if(keys->begin(), keys->end(), [&request](const auto &key) {
            return fourCharacterCode(key.first) == request.key;
        });
        if (found == keys->end())
            return false;
        const ScriptedKey &key = found->second;
        if (request.command == ReadKeyInfo) {
            reply.dataType = fourCharacterCode(key.type);
            reply.dataSize = key.size;
            return true;
        }
        if (request.command != ReadKeyBytes || request.dataSize != key.size
            || request.dataType != 0)
            return false;
        std::copy(key.bytes.begin(), key.bytes.end(), reply.data.begin());
        return true;
    }
    void close() override { }

private:
    std::shared_ptr<FansScript> m_script;
};

/// All a collector reads from, without cores, memory or fans until the test sets them.
struct ScriptedMachine {
    std::shared_ptr<TicksScript> ticks = std::make_shared<TicksScript>();
    std::shared_ptr<PagesScript> pages = std::make_shared<PagesScript>();
    std::shared_ptr<FansScript> fans = std::make_shared<FansScript>();
    std::uint64_t physicalMemory = 0;

    std::unique_ptr<MetricCollector> makeCollector() const
    {
        return std::make_unique<MetricCollector>(
            std::make_unique<ScriptedFans>(fans),
            std::make_unique<ScriptedPages>(pages, physicalMemory),
            std::make_unique<ScriptedTicks>(ticks));
    }
};
