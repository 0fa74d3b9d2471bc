#import "Fakes/FakeAppearance.h"

#include <algorithm>

NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";
NSNotificationName const NSSystemColorsDidChangeNotification =
    @"NSSystemColorsDidChangeNotification";

static NSAppearance *drawingAppearance = nil;
static NSAppearance *applicationAppearance = nil;

@interface FakeAppearance : NSAppearance {
@public
    NSString *m_name;
}
@end
@implementation FakeAppearance
@end

static bool isDark(NSAppearance *appearance)
{
    return [((FakeAppearance *)appearance)->m_name rangeOfString:@"Dark"].length > 0;
}

@implementation NSAppearance
+ (NSAppearance *)currentDrawingAppearance
{
    return drawingAppearance ?: fakeAppearance(NSAppearanceNameAqua);
}
+ (NSAppearance *)appearanceNamed:(NSAppearanceName)name
{
    return fakeAppearance(name);
}
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray *)appearances
{
    NSString *best = isDark(self) ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua;
    return [appearances containsObject:best] ? best : [appearances objectAtIndex:0];
}
- (void)performAsCurrentDrawingAppearance:(void(__attribute__((noescape)) ^)(void))block
{
    NSAppearance *outer = drawingAppearance;
    drawingAppearance = self;
    block();
    drawingAppearance = outer;
}
@end

@implementation NSApplication (NSAppearanceCustomization)
- (NSAppearance *)effectiveAppearance
{
    return applicationAppearance ?: fakeAppearance(NSAppearanceNameAqua);
}
- (void)setEffectiveAppearance:(NSAppearance *)appearance
{
    applicationAppearance = appearance;
}
@end

NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification =
    @"NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification";

static bool isMotionReduced = false;

@implementation NSWorkspace
+ (NSWorkspace *)sharedWorkspace
{
    static NSWorkspace *const workspace = [[NSWorkspace alloc] init];
    return workspace;
}
- (NSNotificationCenter *)notificationCenter
{
    static NSNotificationCenter *const center = [[NSNotificationCenter alloc] init];
    return center;
}
- (BOOL)accessibilityDisplayShouldReduceMotion
{
    return isMotionReduced;
}
@end

void setMotionReduced(bool isReduced)
{
    isMotionReduced = isReduced;
    [NSWorkspace.sharedWorkspace.notificationCenter
        postNotificationName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                      object:nil];
}

NSAppearance *fakeAppearance(NSString *name)
{
    FakeAppearance *appearance = [[FakeAppearance alloc] init];
    appearance->m_name = name;
    return appearance;
}

void setApplicationAppearance(NSAppearance *appearance)
{
    [NSApplication.sharedApplication setValue:appearance forKey:@"effectiveAppearance"];
}

@interface FakeColor : NSColor {
@public
    NSString *m_name; // of the catalogue: without components until it is converted
    bool m_isPattern;
    CGFloat m_components[4];
}
@end

static FakeColor *catalogueEntry(NSString *name)
{
    FakeColor *color = [[FakeColor alloc] init];
    color->m_name = name;
    return color;
}

@implementation NSColorSpace
+ (NSColorSpace *)deviceRGBColorSpace
{
    static NSColorSpace *const space = [[NSColorSpace alloc] init];
    return space;
}
@end

#define CATALOGUE_COLOR(color)                                                                     \
    +(NSColor *)color                                                                              \
    {                                                                                              \
        return catalogueEntry(@ #color);                                                           \
    }

@implementation NSColor
@dynamic redComponent, greenComponent, blueComponent, alphaComponent;
CATALOGUE_COLOR(alternateSelectedControlTextColor)
CATALOGUE_COLOR(controlAccentColor)
CATALOGUE_COLOR(controlBackgroundColor)
CATALOGUE_COLOR(labelColor)
CATALOGUE_COLOR(secondaryLabelColor)
CATALOGUE_COLOR(separatorColor)
CATALOGUE_COLOR(systemGreenColor)
CATALOGUE_COLOR(systemOrangeColor)
CATALOGUE_COLOR(systemRedColor)
CATALOGUE_COLOR(systemYellowColor)
CATALOGUE_COLOR(windowBackgroundColor)
+ (NSColor *)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha
{
    FakeColor *color = [[FakeColor alloc] init];
    const CGFloat components[4]{red, green, blue, alpha};
    std::copy_n(components, 4, color->m_components);
    return color;
}
- (NSColor *)colorUsingColorSpace:(NSColorSpace *)space
{
    FakeColor *color = (FakeColor *)self;
    if (color->m_isPattern || space != NSColorSpace.deviceRGBColorSpace)
        return nil;
    if (color->m_name == nil)
        return self;
    const QColor value =
        catalogueColor(color->m_name, isDark(NSAppearance.currentDrawingAppearance));
    // Wide colours can be a little outside of a screen's.
    return [NSColor colorWithRed:value.red() == 255 ? 1.0001 : value.red() / 255.0
                           green:value.green() / 255.0
                            blue:value.blue() / 255.0
                           alpha:value.alpha() / 255.0];
}
@end

@implementation FakeColor
- (CGFloat)component:(int)index
{
    if (m_name != nil || m_isPattern)
        [NSException raise:NSInternalInconsistencyException format:@"a colour without components"];
    return m_components[index];
}
- (CGFloat)redComponent
{
    return [self component:0];
}
- (CGFloat)greenComponent
{
    return [self component:1];
}
- (CGFloat)blueComponent
{
    return [self component:2];
}
- (CGFloat)alphaComponent
{
    return [self component:3];
}
@end

QColor catalogueColor(NSString *name, bool dark)
{
    unsigned sum = 0;
    for (NSUInteger i = 0; i < name.length; ++i)
        sum = sum * 31 + [name characterAtIndex:i];
    return QColor(255, static_cast<int>(sum % 251), dark ? 40 : 200, 217);
}

NSColor *patternColor()
{
    FakeColor *color = [[FakeColor alloc] init];
    color->m_isPattern = true;
    return color;
}

NSString *catalogueName(NSColor *color)
{
    return ((FakeColor *)color)->m_name;
}
