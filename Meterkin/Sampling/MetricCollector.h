#pragma once

#include "Platform/Clock.h"
#include "Platform/MetricSources.h"
#include "Sampling/ReadingBatch.h"

#include <QBindable>
#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

class ReadingLoop;

/// Publishes the readings that are taken in the background, several at a time where nobody would
/// know the difference. Main thread only. Slow or hanging fans never delay memory and CPU.
class MetricCollector : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<FanReading> latestFanSpeeds READ latestFanSpeeds NOTIFY latestFanSpeedsChanged
                   BINDABLE bindableLatestFanSpeeds)
    Q_PROPERTY(std::optional<MemoryInfo> latestMemory READ latestMemory NOTIFY latestMemoryChanged
                   BINDABLE bindableLatestMemory)
    Q_PROPERTY(std::optional<CPUInfo> latestCPUInfo READ latestCPUInfo NOTIFY latestCPUInfoChanged
                   BINDABLE bindableLatestCPUInfo)
    Q_PROPERTY(qint64 fanCount READ fanCount NOTIFY fanCountChanged BINDABLE bindableFanCount)

public:
    explicit MetricCollector(
        MetricSources sources, WallClock clock = [] { return std::chrono::system_clock::now(); },
        QObject *parent = nullptr);
    /// Does not wait for a sensor that takes long: the result of a sample that is being taken is
    /// dropped.
    ~MetricCollector() override;

    /// Samples at once, then every `interval` seconds; another call restarts it with a new
    /// interval. Any double is safe, see intervalInEffect(). The sample that is taken at once is
    /// published at once.
    void start(double interval);

    /// Whether a sample is to be published at once, with those before it, rather than with one that
    /// follows. Called in the background, in the order of the samples, up to twice for each. Every
    /// sample is while none is set.
    void setFilter(std::function<bool(const Reading &)> matters);
    /// Publishes now what has been sampled and not been published yet.
    void publishNow();

    /// Everything in the last sample, empty before the first. What follows is part of it.
    const MetricSample &latestSample() const { return m_latest->sample; }
    /// When that was taken.
    std::chrono::system_clock::time_point latestTime() const { return m_latest->time; }
    /// The fans that could be read, in index order; during a slow read those of the previous one.
    QList<FanReading> latestFanSpeeds() const { return m_latestFanSpeeds; }
    QBindable<QList<FanReading>> bindableLatestFanSpeeds() const { return &m_latestFanSpeeds; }
    /// Absent before the first sample and after a failed one.
    std::optional<MemoryInfo> latestMemory() const { return m_latestMemory; }
    QBindable<std::optional<MemoryInfo>> bindableLatestMemory() const { return &m_latestMemory; }
    /// Absent before the first sample and after a failed one.
    std::optional<CPUInfo> latestCPUInfo() const { return m_latestCPUInfo; }
    QBindable<std::optional<CPUInfo>> bindableLatestCPUInfo() const { return &m_latestCPUInfo; }
    /// All fans of the machine, also those that cannot be read.
    qint64 fanCount() const { return m_fanCount; }
    QBindable<qint64> bindableFanCount() const { return &m_fanCount; }
    /// Whether the fans have been read once, so that their number is known.
    bool areFansKnown() const { return m_latest->sample.fans.has_value(); }

    /// Called on the main thread after each sample has been published, while it is the last one.
    /// Set before start().
    std::function<void()> onTick;
    /// In onTick: whether a later sample is published right after it.
    bool hasMore() const { return m_hasMore; }

signals:
    void latestFanSpeedsChanged();
    void latestMemoryChanged();
    void latestCPUInfoChanged();
    void fanCountChanged();

private:
    void publish(std::unique_ptr<Reading> &reading);

    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, QList<FanReading>, m_latestFanSpeeds,
                               &MetricCollector::latestFanSpeedsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, std::optional<MemoryInfo>, m_latestMemory,
                               &MetricCollector::latestMemoryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, std::optional<CPUInfo>, m_latestCPUInfo,
                               &MetricCollector::latestCPUInfoChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, qint64, m_fanCount,
                               &MetricCollector::fanCountChanged)

    std::shared_ptr<ReadingLoop> m_loop; ///< outlives the collector where a sensor hangs
    std::vector<std::thread> m_threads; ///< none before the first start
    ReadingBatch m_batch;
    bool m_isPublishing = false;
    bool m_hasMore = false;
    std::unique_ptr<Reading> m_latest = std::make_unique<Reading>();
};
