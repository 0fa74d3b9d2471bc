#include "InterpolateColor.h"

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
