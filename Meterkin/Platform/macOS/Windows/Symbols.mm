#include "Platform/macOS/Windows/Symbols.h"

#include "Platform/macOS/FoundationValues.h"

#import <AppKit/AppKit.h>

#include <QtMath>

#include <memory>

namespace {

// The pixels of QImage::Format_ARGB32_Premultiplied, as this processor lays them out.
constexpr uint32_t PixelFormat = static_cast<uint32_t>(kCGImageAlphaPremultipliedFirst)
    | static_cast<uint32_t>(kCGBitmapByteOrder32Little);
constexpr size_t BitsPerComponent = 8;

using Context = std::unique_ptr<CGContext, decltype(&CGContextRelease)>;

Context contextOver(QImage &image)
{
    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    Context context(CGBitmapContextCreate(image.bits(), static_cast<size_t>(image.width()),
                                          static_cast<size_t>(image.height()), BitsPerComponent,
                                          static_cast<size_t>(image.bytesPerLine()), space,
                                          PixelFormat),
                    &CGContextRelease);
    CGColorSpaceRelease(space);
    return context;
}

NSImage *symbolNamed(const QString &name, double pointSize, bool isSemibold)
{
    NSImage *symbol = [NSImage imageWithSystemSymbolName:foundationText(name)
                                accessibilityDescription:nil];
    return [symbol imageWithSymbolConfiguration:[NSImageSymbolConfiguration
                                                    configurationWithPointSize:pointSize
                                                                        weight:isSemibold
                                                                            ? NSFontWeightSemibold
                                                                            : NSFontWeightRegular]];
}

} // namespace

QImage systemSymbol(const QString &name, double pointSize, bool isSemibold, double scale)
{
    NSImage *symbol = symbolNamed(name, pointSize, isSemibold);
    if (symbol == nil)
        return {};
    const NSSize size = symbol.size;
    QImage image(qCeil(size.width * scale), qCeil(size.height * scale),
                 QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    image.fill(Qt::transparent);
    const Context context = contextOver(image);
    if (!context)
        return {};
    CGContextScaleCTM(context.get(), scale, scale);
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context.get()
                                                                               flipped:NO];
    [symbol drawInRect:NSMakeRect(0, 0, size.width, size.height)];
    [NSGraphicsContext restoreGraphicsState];
    image.setDevicePixelRatio(scale);
    return image;
}
