#import <AppKit/AppKit.h>

#include "Fakes/CallLog.h"

#include <array>
#include <vector>

/// Keeps to the layout of its format: as this program uses it, or red, green, blue and opacity in
/// that order.
struct CGContext {
    uint8_t *data;
    size_t width, height, bytesPerRow;
    uint32_t format;
    CGFloat scaleX, scaleY;
    bool isFlipped;

    void setPixel(size_t x, size_t y, std::array<uint8_t, 4> rgba)
    {
        uint8_t *pixel = data + y * bytesPerRow + x * 4;
        const bool isArgb = format
            == (static_cast<uint32_t>(kCGImageAlphaPremultipliedFirst)
                | kCGBitmapByteOrder32Little);
        for (size_t i = 0; i < 4; ++i)
            pixel[isArgb ? std::array<size_t, 4>{2, 1, 0, 3}[i] : i] = rgba[i];
    }
};
struct CGColorSpace { };

CGColorSpaceRef CGColorSpaceCreateDeviceRGB()
{
    CallLog::note(QStringLiteral("create space"));
    return new CGColorSpace;
}

void CGColorSpaceRelease(CGColorSpaceRef space)
{
    CallLog::note(QStringLiteral("release space"));
    delete space;
}

CGContextRef CGBitmapContextCreate(void *data, size_t width, size_t height, size_t bitsPerComponent,
                                   size_t bytesPerRow, CGColorSpaceRef space, uint32_t bitmapInfo)
{
    if (data == nullptr || space == nullptr || bitsPerComponent != 8 || bytesPerRow < width * 4)
        return nullptr;
    CallLog::note(QStringLiteral("create context"));
    return new CGContext{
        static_cast<uint8_t *>(data), width, height, bytesPerRow, bitmapInfo, 1.0, 1.0, false};
}

void CGContextRelease(CGContextRef context)
{
    CallLog::note(QStringLiteral("release context"));
    delete context;
}

void CGContextScaleCTM(CGContextRef context, CGFloat sx, CGFloat sy)
{
    context->scaleX *= sx;
    context->scaleY *= sy;
}

static NSGraphicsContext *currentContext = nil;
static std::vector<NSGraphicsContext *> savedContexts;

@interface FakeGraphicsContext : NSGraphicsContext {
@public
    CGContextRef m_port;
}
@end
@implementation FakeGraphicsContext
@end

@implementation NSGraphicsContext
+ (NSGraphicsContext *)graphicsContextWithCGContext:(CGContextRef)graphicsPort
                                            flipped:(BOOL)initialFlippedState
{
    FakeGraphicsContext *context = [[FakeGraphicsContext alloc] init];
    graphicsPort->isFlipped = initialFlippedState;
    context->m_port = graphicsPort;
    return context;
}
+ (NSGraphicsContext *)currentContext
{
    return currentContext;
}
+ (void)setCurrentContext:(NSGraphicsContext *)context
{
    currentContext = context;
}
+ (void)saveGraphicsState
{
    savedContexts.push_back(currentContext);
}
+ (void)restoreGraphicsState
{
    currentContext = savedContexts.back();
    savedContexts.pop_back();
}
@end

@interface FakeSymbolConfiguration : NSImageSymbolConfiguration {
@public
    CGFloat m_pointSize;
}
@end
@implementation FakeSymbolConfiguration
@end

@implementation NSImageSymbolConfiguration
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight
{
    CallLog::note(QStringLiteral("weight %1").arg(weight));
    FakeSymbolConfiguration *configuration = [[FakeSymbolConfiguration alloc] init];
    configuration->m_pointSize = pointSize;
    return configuration;
}
@end

@interface FakeImage : NSImage {
    NSSize m_size;
}
@end

@implementation NSImage
@dynamic size;
+ (instancetype)imageWithSystemSymbolName:(NSString *)name
                 accessibilityDescription:(NSString *)description
{
    (void)description;
    return [name isEqualToString:@"gearshape"] ? [[FakeImage alloc] init] : nil;
}
- (NSImage *)imageWithSymbolConfiguration:(NSImageSymbolConfiguration *)configuration
{
    // Wider than high, and not of whole points, as many are.
    const CGFloat side = ((FakeSymbolConfiguration *)configuration)->m_pointSize;
    FakeImage *image = [[FakeImage alloc] init];
    image.size = NSMakeSize(side * 1.5, side);
    return image;
}
- (void)drawInRect:(NSRect)rect
{
    (void)rect;
}
@end

@implementation FakeImage
- (NSSize)size
{
    return m_size;
}
- (void)setSize:(NSSize)size
{
    m_size = size;
}
/// Its upper left quarter, in red.
- (void)drawInRect:(NSRect)rect
{
    CGContextRef port = ((FakeGraphicsContext *)NSGraphicsContext.currentContext)->m_port;
    for (size_t row = 0; row < port->height; ++row) {
        for (size_t column = 0; column < port->width; ++column) {
            const CGFloat x = (static_cast<CGFloat>(column) + 0.5) / port->scaleX - rect.origin.x;
            const CGFloat fromBottom =
                (static_cast<CGFloat>(port->height - row) - 0.5) / port->scaleY;
            const CGFloat y = fromBottom - rect.origin.y;
            const bool isUpper =
                port->isFlipped ? y < rect.size.height / 2 : y >= rect.size.height / 2;
            if (isUpper && x < rect.size.width / 2)
                port->setPixel(column, row, {255, 0, 0, 255});
        }
    }
}
@end
