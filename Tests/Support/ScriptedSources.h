#pragma once

#include "Platform/FanControllerConnection.h"
#include "Platform/FourCharacterCode.h"
#include "Platform/PageCounters.h"
#include "Platform/ProcessorTicks.h"
#include "Sampling/MetricCollector.h"

#include <algorithm>
#include <array>
#include <atomic>
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
    /// From now on every read hangs until release(), which the same thread calls.
    void hold() { m_mutex.lock(); }
    void release() { m_mutex.unlock(); }
    /// Reads that have begun.
    int readCount() const { return m_readCount; }
    /// The source's side.
    Answer read()
    {
        ++m_readCount;
        const std::lock_guard lock(m_mutex);
        return m_answer;
    }

private:
    std::mutex m_mutex;
    Answer m_answer{};
    std::atomic<int> m_readCount = 0;
};

using Cores = std::vector<ProcessorCore>;
using TicksScript = Script<std::optional<Cores>>;
using PagesScript = Script<std::optional<PageCounts>>;

/// The value of one key of the scripted fan controller.
struct ScriptedKey {
    std::string type = "flt ";
    std::array<std::uint8_t, 4> bytes{};
    std::uint32_t size = 4;
};
/// Absent: the machine has no controller. A key that is not there cannot be read.
using FanKeys = std::optional<std::map<std::string, ScriptedKey>>;
using FansScript = Script<FanKeys>;

/// A seam interface whose answers come from a script that the test keeps.
template <typename Interface, typename Source> struct Scripted : Interface {
    explicit Scripted(std::shared_ptr<Source> source)
        : script(std::move(source))
    {
    }
    std::shared_ptr<Source> script;
};

struct ScriptedTicks : Scripted<ProcessorTicks, TicksScript> {
    using Scripted::Scripted;
    bool read(Cores &cores) override
    {
        const std::optional<Cores> answer = script->read();
        cores = answer.value_or(Cores());
        return answer.has_value();
    }
};

struct ScriptedPages : Scripted<PageCounters, PagesScript> {
    using Scripted::Scripted;
    std::optional<PageCounts> read() override { return script->read(); }
    std::uint64_t physicalMemory() override { return total; }
    std::uint64_t total = 0;
};

struct ScriptedFans : Scripted<FanControllerConnection, FansScript> {
    using Scripted::Scripted;
    bool open() override { return script->read().has_value(); }
    bool call(const ControllerRecord &request, ControllerRecord &reply) override
    {
        const FanKeys keys = script->read();
        const auto found = keys->find(fourCharacterText(request.key));
        if (found == keys->end())
            return false;
        const ScriptedKey &key = found->second;
        if (request.command == ReadKeyInfo) {
            reply.dataType = fourCharacterCode(key.type);
            reply.dataSize = key.size;
            return true;
        }
        std::copy(key.bytes.begin(), key.bytes.end(), reply.data.begin());
        return request.command == ReadKeyBytes && request.dataSize == key.size
            && request.dataType == 0;
    }
    void close() override { }
};

/// All a collector reads from, without cores, memory or fans until the test sets them.
struct ScriptedMachine {
    std::shared_ptr<TicksScript> ticks = std::make_shared<TicksScript>();
    std::shared_ptr<PagesScript> pages = std::make_shared<PagesScript>();
    std::shared_ptr<FansScript> fans = std::make_shared<FansScript>();
    std::uint64_t physicalMemory = 0;

    std::unique_ptr<MetricCollector> makeCollector() const
    {
        auto memory = std::make_unique<ScriptedPages>(pages);
        memory->total = physicalMemory;
        return std::make_unique<MetricCollector>(std::make_unique<ScriptedFans>(fans),
                                                 std::move(memory),
                                                 std::make_unique<ScriptedTicks>(ticks));
    }
};
