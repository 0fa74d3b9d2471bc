#pragma once

#include "Platform/MetricSources.h"
#include "Sampling/MetricSample.h"

#include <QBindable>
#include <QList>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class MetricSampler;

/// Samples the machine on a timer and publishes the readings. Main thread only; the readers run in
/// the background, with at most one sample waiting. Slow or hanging fans never delay memory and
/// CPU: a second thread continues without them.
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
    explicit MetricCollector(MetricSources sources, QObject *parent = nullptr);
    /// Never waits for a sensor: the result of a sample that is being taken is dropped.
    ~MetricCollector() override;

    /// Samples at once, then every `interval` seconds; another call restarts it with a new
    /// interval. Any double is safe, see intervalInEffect().
    void start(double interval);

    /// Everything in the last sample, empty before the first. What follows is part of it.
    const MetricSample &latestSample() const { return m_latestSample; }
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
    bool areFansKnown() const { return m_latestSample.fans.has_value(); }

    /// Called on the main thread after each sample has been published. Set before start().
    std::function<void()> onTick;

signals:
    void latestFanSpeedsChanged();
    void latestMemoryChanged();
    void latestCPUInfoChanged();
    void fanCountChanged();

private:
    struct Shared;

    void takeSample();
    /// Starts a background job that takes the sample that is due.
    void startJob();
    void publish(const MetricSample &sample);

    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, QList<FanReading>, m_latestFanSpeeds,
                               &MetricCollector::latestFanSpeedsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, std::optional<MemoryInfo>, m_latestMemory,
                               &MetricCollector::latestMemoryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, std::optional<CPUInfo>, m_latestCPUInfo,
                               &MetricCollector::latestCPUInfoChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MetricCollector, qint64, m_fanCount,
                               &MetricCollector::fanCountChanged)

    std::shared_ptr<MetricSampler> m_sampler;
    std::shared_ptr<Shared> m_shared;
    std::unique_ptr<QThreadPool> m_queue;
    QTimer m_timer;
    QTimer m_retryTimer; ///< runs while a sample is due: starts another job when the first hangs
    MetricSample m_latestSample;
};
