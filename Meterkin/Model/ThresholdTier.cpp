#include "Model/ThresholdTier.h"

ThresholdTier tierOf(std::optional<double> value, const Thresholds &thresholds)
{
    if (!value || *value < thresholds.green)
        return ThresholdTier::Green;
    return *value < thresholds.yellow ? ThresholdTier::Yellow : ThresholdTier::Red;
}
