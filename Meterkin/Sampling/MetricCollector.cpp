#include "Sampling/MetricCollector.h"

#include "Sampling/Interval.h"
#include "Sampling/ReadingLoop.h"

#include <QPointer>

#include <utility>

MetricCollector::MetricCollector(MetricSources sources, WallClock clock, QObject *parent)
    : QObject(parent)
    , m_loop(std::make_shared<ReadingLoop>(std::move(sources), std::move(clock), [this] {
        QMetaObject::invokeMethod(this, &MetricCollector::publishNow, Qt::QueuedConnection);
    }))
{
}

MetricCollector::~MetricCollector()
{
    // A sensor may hang forever: such a thread is left behind.
    const bool isOver = m_loop->end();
    for (std::thread &thread : m_threads)
        isOver ? thread.join() : thread.detach();
}

void MetricCollector::start(double interval)
{
    const std::chrono::duration<double> seconds(intervalInEffect(interval));
    m_loop->start(std::chrono::duration_cast<std::chrono::steady_clock::duration>(seconds));
    while (m_threads.size() < 2)
        m_threads.emplace_back([loop = m_loop] { loop->run(); });
}

void MetricCollector::setFilter(std::function<bool(const Reading &)> matters)
{
    m_loop->setFilter(std::move(matters));
}

void MetricCollector::publishNow()
{
    if (m_isPublishing)
        return; // asked for from within a tick
    m_loop->take(m_batch);
    m_isPublishing = true;
    const QPointer self(this);
    for (std::unique_ptr<Reading> &reading : m_batch.readings()) {
        m_hasMore = &reading != &m_batch.readings().back();
        publish(reading);
        if (!self)
            return;
    }
    m_isPublishing = false;
}

void MetricCollector::publish(std::unique_ptr<Reading> &reading)
{
    // Exchanged: the storage of the last but one sample is free for a new one.
    std::swap(m_latest, reading);
    const MetricSample &sample = m_latest->sample;
    m_fanCount = sample.fans ? sample.fans->count : 0;
    m_latestFanSpeeds = sample.fans ? sample.fans->fans : QList<FanReading>();
    m_latestMemory = sample.memory;
    m_latestCPUInfo = sample.processors;
    // Called through a copy: it may replace onTick or destroy the collector.
    if (const std::function<void()> tick = onTick)
        tick();
}
