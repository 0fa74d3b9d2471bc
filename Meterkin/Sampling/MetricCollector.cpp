#include "Sampling/MetricCollector.h"

#include "Sampling/MetricSampler.h"
#include "Sampling/SamplingInterval.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

namespace {

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
    std::atomic<bool> isJobWaiting = false; ///< for a thread
    std::atomic<bool> isSampleDue = false; ///< whoever takes this back publishes one
    std::mutex sampling; ///< keeps the samples in order
    std::mutex mutex;
    MetricCollector *collector = nullptr; ///< guarded by the mutex; null once it is gone

    /// From the background. Does nothing when another thread has seen to the sample.
    void publishFrom(MetricSampler &sampler)
    {
        const std::lock_guard lock(sampling);
        if (isSampleDue.exchange(false))
            deliver(sampler.sample());
    }

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
    m_queue->setMaxThreadCount(2); // one may be waiting for a fan
    m_queue->setExpiryTimeout(-1);
    connect(&m_timer, &QTimer::timeout, this, &MetricCollector::takeSample);
    m_overdueTimer.setInterval(FanSampler::Patience);
    connect(&m_overdueTimer, &QTimer::timeout, this, &MetricCollector::startJob);
}

MetricCollector::~MetricCollector()
{
    {
        const std::lock_guard lock(m_handover->mutex);
        m_handover->collector = nullptr;
    }
    m_handover->isSampleDue = false;
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
    m_handover->isSampleDue = true;
    startJob();
    m_overdueTimer.start();
}

void MetricCollector::startJob()
{
    if (m_handover->isJobWaiting.exchange(true))
        return;
    m_queue->start([sampler = m_sampler, handover = m_handover] {
        handover->isJobWaiting = false;
        // The others wait for fans that answer promptly, so that one reading has all of them.
        if (!sampler->fans().isSlow()) {
            sampler->fans().refresh();
            handover->publishFrom(*sampler);
        } else {
            handover->publishFrom(*sampler);
            sampler->fans().refresh();
        }
    });
}

void MetricCollector::publish(const MetricSample &sample)
{
    if (!m_handover->isSampleDue)
        m_overdueTimer.stop();
    m_areFansKnown = sample.fans.has_value();
    m_fanCount = sample.fans ? sample.fans->count : 0;
    m_latestFanSpeeds = sample.fans ? sample.fans->fans : QList<FanReading>();
    m_latestMemory = sample.memory;
    m_latestCPUInfo = sample.processors;
    // A copy: the callback may replace itself or destroy the collector.
    if (const std::function<void()> tick = onTick)
        tick();
}
