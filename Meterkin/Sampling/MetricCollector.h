#pragma once

#include "Platform/FanControllerConnection.h"
#include "Platform/PageCounters.h"
#include "Platform/ProcessorTicks.h"
#include "Sampling/CPUInfo.h"
#include "Sampling/FanReading.h"
#include "Sampling/MemoryInfo.h"

#include <QBindable>
#include <QList>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class MetricSampler;
struct MetricSample;

/// Samples the machine on a timer and publishes the newest readings. Lives on the main thread; the
/// readers run on a background queue, with at most one sample waiting in it. Fans that answer late
/// or never hold up nothing else: a second thread goes on without them.
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
    /// The sources are owned by the readers, which share them with samples under way.
    MetricCollector(std::unique_ptr<FanControllerConnection> fans,
                    std::unique_ptr<PageCounters> pages, std::unique_ptr<ProcessorTicks> ticks,
                    QObject *parent = nullptr);
    /// Never waits for a sensor: a sample under way ends unheard.
    ~MetricCollector() override;

    /// Samples at once, then every `interval` seconds; calling it again restarts with the new one.
    /// Any double is safe: what is below a tenth of a second, or no number, counts as that, and
    /// what a timer cannot hold as the 24 days that it can.
    void start(double interval);

    /// One entry a fan that answered in the last sample, in index order; while an answer is late,
    /// for some seconds those of the one before.
    QList<FanReading> latestFanSpeeds() const { return m_latestFanSpeeds; }
    QBindable<QList<FanReading>> bindableLatestFanSpeeds() const { return &m_latestFanSpeeds; }
    /// Absent before the first sample and after one that failed.
    std::optional<MemoryInfo> latestMemory() const { return m_latestMemory; }
    QBindable<std::optional<MemoryInfo>> bindableLatestMemory() const { return &m_latestMemory; }
    /// Absent before the first sample and after one that failed.
    std::optional<CPUInfo> latestCPUInfo() const { return m_latestCPUInfo; }
    QBindable<std::optional<CPUInfo>> bindableLatestCPUInfo() const { return &m_latestCPUInfo; }
    /// How many fans the controller reports; may exceed the list of those that answer.
    qint64 fanCount() const { return m_fanCount; }
    QBindable<qint64> bindableFanCount() const { return &m_fanCount; }
    /// Whether the controller has answered, if only that it has no fans.
    bool areFansKnown() const { return m_areFansKnown; }

    /// Called on the main thread after each sample has been published. Set before start().
    std::function<void()> onTick;

signals:
    void latestFanSpeedsChanged();
    void latestMemoryChanged();
    void latestCPUInfoChanged();
    void fanCountChanged();

private:
    struct Handover;

    void takeSample();
    /// Has a thread take the sample that is due.
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
    std::shared_ptr<Handover> m_handover;
    std::unique_ptr<QThreadPool> m_queue;
    QTimer m_timer;
    QTimer m_overdueTimer; ///< runs while a sample is due
    bool m_areFansKnown = false;
};
