#pragma once

#include <QObject>

#include <array>

/// Gives the enumeration its names at run time, for QML and for test output.
class SystemMetrics : public QObject {
    Q_OBJECT

public:
    /// The kinds of measurement. Each has a row in the table of MetricTraits.
    enum class SystemMetric {
        FanSpeed, ///< the first fan, in revolutions per minute
        MemoryUsage, ///< percent
        CpuUsage, ///< percent, the mean of the cores
    };
    Q_ENUM(SystemMetric)
};

using SystemMetric = SystemMetrics::SystemMetric;

/// Every metric, in the order of the enumerators: that of pickers and loops.
inline constexpr std::array allMetrics{SystemMetric::FanSpeed, SystemMetric::MemoryUsage,
                                       SystemMetric::CpuUsage};

/// Every metric, in the order of the dashboard's cards.
inline constexpr std::array dashboardMetrics{SystemMetric::MemoryUsage, SystemMetric::CpuUsage,
                                             SystemMetric::FanSpeed};

/// One value for each metric.
template <typename Value> class ByMetric {
public:
    Value &operator[](SystemMetric metric) { return m_values[static_cast<std::size_t>(metric)]; }
    const Value &operator[](SystemMetric metric) const
    {
        return m_values[static_cast<std::size_t>(metric)];
    }
    bool operator==(const ByMetric &) const = default;

private:
    std::array<Value, allMetrics.size()> m_values{};
};
