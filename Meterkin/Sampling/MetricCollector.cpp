#include "Sampling/MetricCollector.h"

#include "Sampling/Interval.h"
#include "Sampling/MetricSampler.h"

#include <atomic>
#include <mutex>
#include <utility>

/// What the collector shares with its background jobs, which may outlive it.
struct MetricCollector::Shared {
    std::atomic<bool> isJobWaiting = false; ///< for a thread
    std::atomic<bool> isSampleDue = false; ///< the job that resets it takes the sample
    std::mutex sampling; ///< keeps the samples in order
    std::mutex mutex;
    MetricCollector *collector = nullptr; ///< guarded by `mutex`; null when it has been destroyed

    /// In the background. Does nothing when another job has taken the sample.
    void publishFrom(MetricSampler &sampler)
    {
        const std::lock_guard lock(sampling);
        if (isSampleDue.exchange(false))
            deliver(sampler.sample());
    }

    /// In the background. The lock keeps the collector alive while the event is posted.
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

MetricCollector::MetricCollector(MetricSources sources, QObject *parent)
    : QObject(parent)
    , m_sampler(std::make_shared<MetricSampler>(std::move(sources)))
    , m_shared(std::make_shared<Shared>())
    , m_queue(std::make_unique<QThreadPool>())
    , m_timer(this)
{
    m_shared->collector = this;
    m_queue->setMaxThreadCount(2); // a fan may block one
    m_queue->setExpiryTimeout(-1);
    connect(&m_timer, &QTimer::timeout, this, &MetricCollector::takeSample);
    m_retryTimer.setInterval(FanSampler::SlowAfter);
    connect(&m_retryTimer, &QTimer::timeout, this, &MetricCollector::startJob);
}

MetricCollector::~MetricCollector()
{
    {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->collector = nullptr;
    }
    m_shared->isSampleDue = false;
    m_queue->clear();
    // The destructor of a busy pool waits for its threads, but a sensor may hang forever: such a
    // pool is leaked on purpose.
    if (!m_queue->waitForDone(0))
        static_cast<void>(m_queue.release());
}

void MetricCollector::start(double interval)
{
    m_timer.stop();
    takeSample();
    m_timer.start(static_cast<int>(intervalInEffect(interval) * 1000.0));
}

void MetricCollector::takeSample()
{
    m_shared->isSampleDue = true;
    startJob();
    m_retryTimer.start();
}

void MetricCollector::startJob()
{
    if (m_shared->isJobWaiting.exchange(true))
        return;
    m_queue->start([sampler = m_sampler, shared = m_shared] {
        shared->isJobWaiting = false;
        // Fast fans are read first, so that all values of a sample are of the same moment.
        if (!sampler->fans().isSlow()) {
            sampler->fans().refresh();
            shared->publishFrom(*sampler);
        } else {
            shared->publishFrom(*sampler);
            sampler->fans().refresh();
        }
    });
}

void MetricCollector::publish(const MetricSample &sample)
{
    if (!m_shared->isSampleDue)
        m_retryTimer.stop();
    m_latestSample = sample;
    m_fanCount = sample.fans ? sample.fans->count : 0;
    m_latestFanSpeeds = sample.fans ? sample.fans->fans : QList<FanReading>();
    m_latestMemory = sample.memory;
    m_latestCPUInfo = sample.processors;
    // Called through a copy: it may replace onTick or destroy the collector.
    if (const std::function<void()> tick = onTick)
        tick();
}
