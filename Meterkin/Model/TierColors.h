#pragma once

#include "Model/ThresholdTier.h"

#include <cstdint>

/// What a tier is drawn in where the system has no colours of its own for it: 0xffRRGGBB, as QRgb.
/// Bright on dark, deep on light. They have a contrast of 3:1 on a dashboard's card, enough for
/// large texts and charts; small texts need 4.5:1 and so a deeper green and yellow on light.
constexpr std::uint32_t tierColor(ThresholdTier tier, bool isOnDark)
{
    switch (tier) {
    case ThresholdTier::Green:
        return isOnDark ? 0xff32d360 : 0xff159947;
    case ThresholdTier::Yellow:
        return isOnDark ? 0xffffcc1f : 0xffba8200;
    case ThresholdTier::Red:
        break;
    }
    return isOnDark ? 0xffff5c54 : 0xffd4212c;
}
