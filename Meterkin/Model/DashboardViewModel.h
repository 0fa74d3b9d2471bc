#pragma once

#include "Model/SystemMetric.h"
#include "Sampling/MetricSample.h"

#include <QBindable>
#include <QList>
#include <QObject>
#include <QProperty>

#include <optional>

class MetricCollector;

/// One metric since the program started, in its unit.
struct MetricRecord {
    std::optional<double> value; ///< by which it is judged now; absent when it cannot be measured
    QList<double> history; ///< the last values, oldest first, at most HistoryLength of the model
    std::optional<double> high; ///< since the start; absent until there was a value
    std::optional<double> low;

    bool operator==(const MetricRecord &) const = default;
};

/// The newest readings, a short history of each metric and its extremes since the start. A binding
/// that reads any of it is evaluated at each update. Main thread only.
class DashboardViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(qint64 fanCount READ fanCount NOTIFY fanCountChanged BINDABLE bindableFanCount FINAL)

public:
    static constexpr qsizetype HistoryLength = 60;

    /// Everything is empty until the first update. The collector outlives the model.
    explicit DashboardViewModel(const MetricCollector &collector, QObject *parent = nullptr);

    /// Takes in the collector's readings. Once a sample.
    void update();

    /// As the collector published it at the last update.
    const MetricSample &sample() const { return observed().sample; }
    const MetricRecord &record(SystemMetric metric) const { return observed().records[metric]; }
    std::optional<double> currentValue(SystemMetric metric) const { return record(metric).value; }
    /// The current value with its unit, or "N/A".
    QString displayText(SystemMetric metric) const;
    /// A line for each metric: its title and its text.
    QString summary() const;
    /// Whether the computer has what it takes to measure it.
    bool isPresent(SystemMetric metric) const;

    // The same by name.
    QList<FanReading> fanSpeeds() const;
    std::optional<MemoryInfo> memoryInfo() const { return sample().memory; }
    std::optional<CPUInfo> cpuInfo() const { return sample().processors; }
    QList<double> fanSpeedHistory() const { return record(SystemMetric::FanSpeed).history; }
    QList<double> memoryHistory() const { return record(SystemMetric::MemoryUsage).history; }
    QList<double> cpuUsageHistory() const { return record(SystemMetric::CpuUsage).history; }
    std::optional<double> fanSpeedHigh() const { return record(SystemMetric::FanSpeed).high; }
    std::optional<double> fanSpeedLow() const { return record(SystemMetric::FanSpeed).low; }
    std::optional<double> memoryHigh() const { return record(SystemMetric::MemoryUsage).high; }
    std::optional<double> memoryLow() const { return record(SystemMetric::MemoryUsage).low; }
    std::optional<double> cpuUsageHigh() const { return record(SystemMetric::CpuUsage).high; }
    std::optional<double> cpuUsageLow() const { return record(SystemMetric::CpuUsage).low; }

    /// All fans of the machine, also those that cannot be read.
    qint64 fanCount() const { return m_fanCount; }
    QBindable<qint64> bindableFanCount() const { return &m_fanCount; }

signals:
    void fanCountChanged();

private:
    struct Readings {
        MetricSample sample;
        ByMetric<MetricRecord> records;
    };

    /// Lets a binding that reads them follow.
    const Readings &observed() const
    {
        static_cast<void>(m_updates.value());
        return m_readings;
    }

    const MetricCollector &m_collector;
    Readings m_readings; ///< changed in place, for the lists are long
    QProperty<quint32> m_updates{0};
    Q_OBJECT_BINDABLE_PROPERTY(DashboardViewModel, qint64, m_fanCount,
                               &DashboardViewModel::fanCountChanged)
};
