#include "Model/ThresholdTier.h"

ThresholdTier tierOf(std::optional<double> value, const Thresholds &thresholds)
{
    if (!value || *value < thresholds.green)
        return ThresholdTier::green;
    return *value < thresholds.yellow ? ThresholdTier::yellow : ThresholdTier::red;
}
