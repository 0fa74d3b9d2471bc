#pragma once

#include "Model/ThresholdTier.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

/// What a metric's card shows.
struct MetricCard {
    Q_GADGET
    QML_VALUE_TYPE(metricCard)
    Q_PROPERTY(bool isPresent MEMBER isPresent CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString value MEMBER value CONSTANT)
    Q_PROPERTY(int tier READ tierNumber CONSTANT)
    Q_PROPERTY(double greenThreshold READ greenThreshold CONSTANT)
    Q_PROPERTY(double yellowThreshold READ yellowThreshold CONSTANT)
    Q_PROPERTY(QList<double> sparklineData MEMBER sparklineData CONSTANT)
    Q_PROPERTY(bool hasSparkline READ hasSparkline CONSTANT)
    Q_PROPERTY(bool hasExtremes READ hasExtremes CONSTANT)
    Q_PROPERTY(QString highText READ highText CONSTANT)
    Q_PROPERTY(QString lowText READ lowText CONSTANT)

public:
    bool isPresent = false; ///< whether there is a card at all
    QString title;
    QString value; ///< formatted, or "N/A"
    ThresholdTier tier = ThresholdTier::Green;
    Thresholds thresholds; ///< that the tier comes from
    QList<double> sparklineData; ///< oldest first
    std::optional<double> high; ///< since the start
    std::optional<double> low;
    QString unit; ///< follows the high and the low; with a leading blank where one belongs

    int tierNumber() const { return static_cast<int>(tier); }
    double greenThreshold() const { return thresholds.green; }
    double yellowThreshold() const { return thresholds.yellow; }
    bool hasSparkline() const { return !sparklineData.isEmpty(); }
    /// Both are there: one alone is not shown.
    bool hasExtremes() const { return high && low; }
    QString highText() const;
    QString lowText() const;

    bool operator==(const MetricCard &) const = default;
};
