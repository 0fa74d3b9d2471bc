#include "TierColors.h"

QColor tierColor(ThresholdTier tier)
{
    switch (tier) {
    case ThresholdTier::green:
        return QColor(0x1f, 0x99, 0x3d);
    case ThresholdTier::yellow:
        return QColor(0xb0, 0x80, 0x00);
    case ThresholdTier::red:
        return QColor(0xe5, 0x48, 0x4d);
    }
    Q_UNREACHABLE();
}

QColor interpolateColor(const QColor &from, const QColor &to, double fraction)
{
    if (!from.isValid() || !to.isValid())
        return to;
    const float clamped = !(fraction > 0.0) ? 0.0F
        : fraction > 1.0                    ? 1.0F
                                            : static_cast<float>(fraction);
    const QColor a = from.toRgb();
    const QColor b = to.toRgb();
    const auto blend = [clamped](float start, float end) {
        return start + clamped * (end - start);
    };
    return QColor::fromRgbF(blend(a.redF(), b.redF()), blend(a.greenF(), b.greenF()),
                            blend(a.blueF(), b.blueF()), blend(a.alphaF(), b.alphaF()));
}
