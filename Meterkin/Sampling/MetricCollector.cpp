#include "Sampling/MetricCollector.h"

#include "Sampling/MetricSampler.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <mutex>

namespace {

constexpr double ShortestInterval = 0.1; // seconds
constexpr double LongestInterval = std::numeric_limits<int>::max() / 1000.0;

int millisecondsOf(double interval)
{
    // Written so that a NaN falls to the safe side.
    const double safe =
        interval > ShortestInterval ? std::min(interval, LongestInterval) : ShortestInterval;
    return static_cast<int>(safe * 1000.0);
}

} // namespace

/// What samples under way share with the collector, and all that outlives it.
struct MetricCollector::Handover {
    std::atomic<bool> isSampleWaiting = false;
    std::mutex mutex;
    MetricCollector *collector = nullptr; ///< guarded by the mutex; null once it is gone

    /// From the background: the collector cannot go away while its event is being posted.
    void deliver(MetricSample sample)
    {
        const std::lock_guard lock(mutex);
        if (!collector)
            return;
        QMetaObject::invokeMethod(
            collector,
            [receiver = collector, sample = std::move(sample)] { receiver->publish(sample); },
            Qt::QueuedConnection);
    }
};

MetricCollector::MetricCollector(std::unique_ptr<FanControllerConnection> fans,
                                 std::unique_ptr<PageCounters> pages,
                                 std::unique_ptr<ProcessorTicks> ticks, QObject *parent)
    : QObject(parent)
    , m_sampler(
          std::make_shared<MetricSampler>(std::move(fans), std::move(pages), std::move(ticks)))
    , m_handover(std::make_shared<Handover>())
    , m_queue(std::make_unique<QThreadPool>())
    , m_timer(this)
{
    m_handover->collector = this;
    m_queue->setMaxThreadCount(1);
    m_queue->setExpiryTimeout(-1);
    connect(&m_timer, &QTimer::timeout, this, &MetricCollector::takeSample);
}

MetricCollector::~MetricCollector()
{
    {
        const std::lock_guard lock(m_handover->mutex);
        m_handover->collector = nullptr;
    }
    m_queue->clear();
    // Deleting a busy pool waits for its thread, and a sensor may hang for ever: that one is left
    // to the end of the process, with the readers its sample shares.
    if (!m_queue->waitForDone(0))
        static_cast<void>(m_queue.release());
}

void MetricCollector::start(double interval)
{
    m_timer.stop();
    takeSample();
    m_timer.start(millisecondsOf(interval));
}

void MetricCollector::takeSample()
{
    if (m_handover->isSampleWaiting.exchange(true))
        return;
    m_queue->start([sampler = m_sampler, handover = m_handover] {
        handover->isSampleWaiting = false;
        handover->deliver(sampler->sample());
    });
}

void MetricCollector::publish(const MetricSample &sample)
{
    m_fanCount = sample.fanCount;
    m_latestFanSpeeds = sample.fans;
    m_latestMemory = sample.memory;
    m_latestCPUInfo = sample.processors;
    // A copy: the callback may replace itself or destroy the collector.
    if (const std::function<void()> tick = onTick)
        tick();
}
