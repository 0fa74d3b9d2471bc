#pragma once

#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"

#include <QString>

#include <optional>

struct MetricSample;

/// Everything that differs from metric to metric. Numbers are in the metric's unit.
struct MetricTraits {
    QString rawValue; ///< by which the metric is stored, in every language
    const char *englishTitle = nullptr;
    const char *englishName = nullptr;
    QString unit; ///< follows a number, with a leading blank where one belongs
    const char *englishAlert = nullptr; ///< with %1 for the value
    QString settingsName; ///< the keys of its thresholds are this and "Green" or "Yellow"
    QString alertSetting; ///< the key of its alert's switch
    double widestValue = 0.0; ///< among usual values; the title reserves its width

    Thresholds standard; ///< defaults
    double lowest = 0.0; ///< threshold that can be chosen in the settings
    double highest = 0.0;
    double step = 1.0;

    /// The value by which the metric is judged, if there is one.
    std::optional<double> (*valueIn)(const MetricSample &) = nullptr;
    /// Whether the computer has a sensor for it. Null: every computer has.
    bool (*isPresentIn)(const MetricSample &) = nullptr;
    int cardDecimals = 0; ///< of the value on the card
    /// What the card shows for a sample that has a value. Null: the value.
    QString (*cardText)(const MetricSample &) = nullptr;

    // In the user's language.
    QString title() const; ///< in pickers
    QString name() const; ///< over its card and its settings
    QString alertText(const QString &value) const;
};

const MetricTraits &traitsOf(SystemMetric metric);

/// The metric with exactly this raw value; nothing for any other text.
std::optional<SystemMetric> metricFromRawValue(QStringView rawValue);

/// Absent when there is none, or none that is finite.
std::optional<double> valueIn(const MetricSample &sample, SystemMetric metric);

/// The value with its unit; "N/A" when it is absent or not finite.
QString valueText(SystemMetric metric, std::optional<double> value, int decimals = 0);

/// The number that valueText() writes for a value, when it has no decimals.
std::optional<double> shownNumber(std::optional<double> value);

/// The widest text that valueText() usually gives.
QString widestText(SystemMetric metric);

/// The value on the metric's card, or "N/A".
QString cardText(SystemMetric metric, const MetricSample &sample);
