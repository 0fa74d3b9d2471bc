#include "Platform/Linux/Tray/Title/Color.h"

#include "Model/TierColors.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double LeastContrast = 4.5; // for small text
// Of the grey on which white and black have the same contrast.
constexpr double MiddleLuminance = 0.179;
constexpr int MixSteps = 64;

struct Hue {
    ThresholdTier tier;
    QColor anywhere; ///< on a background that is not known
};

Hue hueOf(SystemColor color)
{
    switch (color) {
    case SystemColor::Green:
        return {ThresholdTier::Green, QColor(0x1f, 0x99, 0x3d)};
    case SystemColor::Yellow:
        return {ThresholdTier::Yellow, QColor(0xb0, 0x80, 0x00)};
    case SystemColor::Red:
        return {ThresholdTier::Red, QColor(0xe5, 0x48, 0x4d)};
    }
    Q_UNREACHABLE();
}

/// Relative luminance of sRGB: Web Content Accessibility Guidelines 2.
double luminanceOf(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

double contrastOf(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminanceOf(one), luminanceOf(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// A part of the way towards white or black, which leaves the hue as it is.
QColor mixed(const QColor &color, int target, int step)
{
    const auto part = [&](int from) { return from + (target - from) * step / MixSteps; };
    return QColor(part(color.red()), part(color.green()), part(color.blue()));
}

} // namespace

QColor titleColor(SystemColor color, const std::optional<QColor> &background)
{
    const Hue hue = hueOf(color);
    if (!background)
        return hue.anywhere;
    const bool isOnDark = isDarkBackground(*background);
    const QColor wanted = QColor::fromRgb(tierColor(hue.tier, isOnDark));
    int step = 0;
    QColor found = wanted;
    while (contrastOf(found, *background) < LeastContrast && step < MixSteps)
        found = mixed(wanted, isOnDark ? 255 : 0, ++step);
    return found;
}

std::array<QColor, 3> titleColors(const std::optional<QColor> &background)
{
    return {titleColor(SystemColor::Green, background), titleColor(SystemColor::Yellow, background),
            titleColor(SystemColor::Red, background)};
}

QColor typicalBackground(bool isDark)
{
    return isDark ? QColor(0x2e, 0x32, 0x38) : QColor(0xcc, 0xcf, 0xd2);
}

bool isDarkBackground(const QColor &background)
{
    return luminanceOf(background) < MiddleLuminance;
}
