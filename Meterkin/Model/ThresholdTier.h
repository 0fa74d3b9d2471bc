#pragma once

#include <QObject>

#include <optional>

/// Gives the enumeration its names at run time, for QML and for test output.
class ThresholdTiers : public QObject {
    Q_OBJECT

public:
    /// How a value is judged.
    enum class ThresholdTier { Green, Yellow, Red };
    Q_ENUM(ThresholdTier)
};

using ThresholdTier = ThresholdTiers::ThresholdTier;

/// Where the tiers of one metric begin, in its unit. The order is not enforced: with green above
/// yellow there is no yellow tier.
struct Thresholds {
    double green = 0.0; ///< values below are green
    double yellow = 0.0; ///< other values below are yellow, the rest red

    bool operator==(const Thresholds &) const = default;
};

/// The tier of a value; an absent one is green.
ThresholdTier tierOf(std::optional<double> value, const Thresholds &thresholds);

/// The tier of the title: a missing value is judged as zero, which is green under the usual
/// thresholds.
inline ThresholdTier titleTier(std::optional<double> value, const Thresholds &thresholds)
{
    return tierOf(value.value_or(0.0), thresholds);
}
