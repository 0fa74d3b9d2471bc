#include "Platform/macOS/AppKitAppearance.h"

#include "Platform/macOS/AppKitColors.h"
#include "Platform/macOS/AppKitSymbols.h"

NS_ASSUME_NONNULL_BEGIN

@interface MeterkinAppearanceObserver : NSObject {
    AppKitAppearance *m_owner;
}
- (instancetype)initWithOwner:(AppKitAppearance *)owner;
- (void)detach;
@end

NS_ASSUME_NONNULL_END

@implementation MeterkinAppearanceObserver

- (instancetype)initWithOwner:(AppKitAppearance *)owner
{
    self = [super init];
    if (self == nil)
        return nil;
    m_owner = owner;
    [NSApplication.sharedApplication addObserver:self
                                      forKeyPath:@"effectiveAppearance"
                                         options:NSKeyValueObservingOptionNew
                                         context:nullptr];
    // The accent colour changes within an appearance.
    [NSNotificationCenter.defaultCenter addObserver:self
                                           selector:@selector(systemColorsDidChange:)
                                               name:NSSystemColorsDidChangeNotification
                                             object:nil];
    return self;
}

- (void)detach
{
    [NSApplication.sharedApplication removeObserver:self forKeyPath:@"effectiveAppearance"];
    [NSNotificationCenter.defaultCenter removeObserver:self];
}

- (void)observeValueForKeyPath:(NSString *)keyPath
                      ofObject:(id)object
                        change:(NSDictionary *)change
                       context:(void *)context
{
    emit m_owner->changed();
}

- (void)systemColorsDidChange:(NSNotification *)notification
{
    emit m_owner->changed();
}

@end

struct AppKitAppearance::Objects {
    MeterkinAppearanceObserver *observer;
};

AppKitAppearance::AppKitAppearance(QObject *parent)
    : DesktopAppearance(parent)
    , m_objects(new Objects{[[MeterkinAppearanceObserver alloc] initWithOwner:this]})
{
}

AppKitAppearance::~AppKitAppearance()
{
    [m_objects->observer detach];
}

bool AppKitAppearance::isDark() const
{
    // There are variants of both, of higher contrast.
    NSString *match = [NSApplication.sharedApplication.effectiveAppearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return [match isEqual:NSAppearanceNameDarkAqua];
}

SystemColors AppKitAppearance::systemColors() const
{
    __block SystemColors colors;
    [NSApplication.sharedApplication.effectiveAppearance performAsCurrentDrawingAppearance:^{
        colors.windowBackground = colorOf(NSColor.windowBackgroundColor);
        colors.controlBackground = colorOf(NSColor.controlBackgroundColor);
        colors.primary = colorOf(NSColor.labelColor);
        colors.secondary = colorOf(NSColor.secondaryLabelColor);
        colors.separator = colorOf(NSColor.separatorColor);
        colors.accent = colorOf(NSColor.controlAccentColor);
        colors.textOnAccent = colorOf(NSColor.alternateSelectedControlTextColor);
        colors.orange = colorOf(NSColor.systemOrangeColor);
        colors.green = colorOf(NSColor.systemGreenColor);
        colors.yellow = colorOf(NSColor.systemYellowColor);
        colors.red = colorOf(NSColor.systemRedColor);
    }];
    return colors;
}

QImage AppKitAppearance::symbol(const QString &name, double pointSize, double scale) const
{
    return systemSymbol(name, pointSize, scale);
}
