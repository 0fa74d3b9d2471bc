#pragma once

#include <QObject>
#include <QString>

#include <array>
#include <optional>

/// Gives the enumeration its names at run time, for QML and for test output.
class SystemMetrics : public QObject {
    Q_OBJECT

public:
    /// The kinds of measurement.
    enum class SystemMetric {
        fanSpeed, ///< the first fan, in revolutions per minute
        memoryUsage, ///< percent
        cpuUsage, ///< percent, the mean of the cores
    };
    Q_ENUM(SystemMetric)
};

using SystemMetric = SystemMetrics::SystemMetric;

/// Every kind, in the order in which pickers and loops take them.
inline constexpr std::array allMetrics{SystemMetric::fanSpeed, SystemMetric::memoryUsage,
                                       SystemMetric::cpuUsage};

/// The title that the user sees. It is the raw value too, by which the kind is stored.
QString titleOf(SystemMetric metric);

/// The kind with exactly this raw value; nothing for any other text.
std::optional<SystemMetric> metricFromRawValue(QStringView rawValue);

/// The value with its unit and without decimals; "N/A" when it is absent or not finite.
QString valueText(SystemMetric metric, std::optional<double> value);

/// The widest text that valueText() normally gives, for places that keep its width free.
QString widestText(SystemMetric metric);
