#pragma once

#include "Model/SystemMetric.h"
#include "Sampling/CPUInfo.h"
#include "Platform/FanSource.h"
#include "Sampling/MemoryInfo.h"

#include <QBindable>
#include <QList>
#include <QObject>
#include <QProperty>

#include <optional>

class MetricCollector;

/// A value that others follow and only the dashboard itself writes.
#define METERKIN_DASHBOARD_PROPERTY(Type, name, Name)                                              \
public:                                                                                            \
    Q_PROPERTY(Type name READ name NOTIFY name##Changed BINDABLE bindable##Name FINAL)             \
    Type name() const                                                                              \
    {                                                                                              \
        return m_##name.value();                                                                   \
    }                                                                                              \
    QBindable<Type> bindable##Name() const                                                         \
    {                                                                                              \
        return &m_##name;                                                                          \
    }                                                                                              \
    Q_SIGNAL void name##Changed();                                                                 \
                                                                                                   \
private:                                                                                           \
    Q_OBJECT_BINDABLE_PROPERTY(DashboardViewModel, Type, m_##name,                                 \
                               &DashboardViewModel::name##Changed)

/// The newest readings, a short history of each metric and its extremes since the start. Main
/// thread only.
class DashboardViewModel : public QObject {
    Q_OBJECT

    // As the collector published them at the last update.
    METERKIN_DASHBOARD_PROPERTY(QList<FanReading>, fanSpeeds, FanSpeeds)
    METERKIN_DASHBOARD_PROPERTY(std::optional<MemoryInfo>, memoryInfo, MemoryInfo)
    METERKIN_DASHBOARD_PROPERTY(std::optional<CPUInfo>, cpuInfo, CpuInfo)
    METERKIN_DASHBOARD_PROPERTY(qint64, fanCount, FanCount)

    // The last values of each metric, at most HistoryLength, oldest first.
    METERKIN_DASHBOARD_PROPERTY(QList<double>, fanSpeedHistory, FanSpeedHistory)
    METERKIN_DASHBOARD_PROPERTY(QList<double>, memoryHistory, MemoryHistory)
    METERKIN_DASHBOARD_PROPERTY(QList<double>, cpuUsageHistory, CpuUsageHistory)

    // Absent until the metric had a value.
    METERKIN_DASHBOARD_PROPERTY(std::optional<double>, fanSpeedHigh, FanSpeedHigh)
    METERKIN_DASHBOARD_PROPERTY(std::optional<double>, fanSpeedLow, FanSpeedLow)
    METERKIN_DASHBOARD_PROPERTY(std::optional<double>, memoryHigh, MemoryHigh)
    METERKIN_DASHBOARD_PROPERTY(std::optional<double>, memoryLow, MemoryLow)
    METERKIN_DASHBOARD_PROPERTY(std::optional<double>, cpuUsageHigh, CpuUsageHigh)
    METERKIN_DASHBOARD_PROPERTY(std::optional<double>, cpuUsageLow, CpuUsageLow)

public:
    static constexpr qsizetype HistoryLength = 60;

    /// Everything is empty until the first update. The collector outlives the model.
    explicit DashboardViewModel(const MetricCollector &collector, QObject *parent = nullptr);

    /// Takes in the collector's readings. Once a sample.
    void update();

    /// The value by which the kind is judged, in its unit; absent when there is none, or none that
    /// is finite.
    std::optional<double> currentValue(SystemMetric metric) const;
    /// The current value with its unit, or "N/A".
    QString displayText(SystemMetric metric) const;

private:
    const MetricCollector &m_collector;
};
