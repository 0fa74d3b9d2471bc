#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// Relative luminance of sRGB, as the web's accessibility guidelines define it.
inline double luminance(const QColor &color)
{
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

inline double contrast(const QColor &a, const QColor &b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

/// A translucent colour on an opaque one.
inline QColor blended(const QColor &top, const QColor &below)
{
    const float share = top.alphaF();
    const auto mixed = [share](float a, float b) { return share * a + (1.0F - share) * b; };
    return QColor::fromRgbF(mixed(top.redF(), below.redF()), mixed(top.greenF(), below.greenF()),
                            mixed(top.blueF(), below.blueF()));
}
