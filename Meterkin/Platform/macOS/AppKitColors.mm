#include "Platform/macOS/AppKitColors.h"

#include <algorithm>

namespace {

float component(CGFloat value)
{
    return static_cast<float>(std::clamp(value, 0.0, 1.0));
}

} // namespace

QColor colorOf(NSColor *color)
{
    // A colour of the catalogue throws when asked for its components before it is converted.
    NSColor *converted = [color colorUsingColorSpace:NSColorSpace.deviceRGBColorSpace];
    if (converted == nil)
        return {};
    return QColor::fromRgbF(component(converted.redComponent), component(converted.greenComponent),
                            component(converted.blueComponent),
                            component(converted.alphaComponent));
}

NSColor *appKitColor(const QColor &color)
{
    return [NSColor colorWithRed:static_cast<CGFloat>(color.redF())
                           green:static_cast<CGFloat>(color.greenF())
                            blue:static_cast<CGFloat>(color.blueF())
                           alpha:static_cast<CGFloat>(color.alphaF())];
}
