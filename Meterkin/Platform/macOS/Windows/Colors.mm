#include "Platform/macOS/Windows/Colors.h"

#include <algorithm>

namespace {

float component(CGFloat value)
{
    return static_cast<float>(std::clamp(value, 0.0, 1.0));
}

} // namespace

QColor colorOf(NSColor *color)
{
    // Catalogue colours throw when their components are read before a conversion.
    NSColor *converted = [color colorUsingColorSpace:NSColorSpace.deviceRGBColorSpace];
    if (converted == nil)
        return {};
    return QColor::fromRgbF(component(converted.redComponent), component(converted.greenComponent),
                            component(converted.blueComponent),
                            component(converted.alphaComponent));
}

NSColor *appKitColor(const QColor &color)
{
    // From integers, since the fractions that Qt gives have single precision only.
    constexpr CGFloat Full = 65535;
    const QRgba64 components = color.rgba64();
    return [NSColor colorWithRed:components.red() / Full
                           green:components.green() / Full
                            blue:components.blue() / Full
                           alpha:components.alpha() / Full];
}
