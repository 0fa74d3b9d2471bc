#include "Platform/macOS/Windows/DesktopAppearance.h"

#include "Platform/macOS/Windows/Colors.h"
#include "Platform/macOS/Windows/Symbols.h"

NS_ASSUME_NONNULL_BEGIN

@interface MeterkinAppearanceObserver : NSObject {
@public
    MacDesktopAppearance *owner; // outlives the observation
}
@end

NS_ASSUME_NONNULL_END

@implementation MeterkinAppearanceObserver

- (void)observeValueForKeyPath:(NSString *)keyPath
                      ofObject:(id)object
                        change:(NSDictionary *)change
                       context:(void *)context
{
    emit owner->changed();
}

- (void)lookDidChange:(NSNotification *)notification
{
    emit owner->changed();
}

@end

struct MacDesktopAppearance::Objects {
    MeterkinAppearanceObserver *observer;
};

MacDesktopAppearance::MacDesktopAppearance(QObject *parent)
    : DesktopAppearance(parent)
    , m_objects(new Objects{[[MeterkinAppearanceObserver alloc] init]})
{
    m_objects->observer->owner = this;
    [NSApplication.sharedApplication addObserver:m_objects->observer
                                      forKeyPath:@"effectiveAppearance"
                                         options:NSKeyValueObservingOptionNew
                                         context:nullptr];
    // The accent colour can change without the appearance.
    [NSNotificationCenter.defaultCenter addObserver:m_objects->observer
                                           selector:@selector(lookDidChange:)
                                               name:NSSystemColorsDidChangeNotification
                                             object:nil];
    [NSWorkspace.sharedWorkspace.notificationCenter
        addObserver:m_objects->observer
           selector:@selector(lookDidChange:)
               name:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
             object:nil];
}

MacDesktopAppearance::~MacDesktopAppearance()
{
    [NSApplication.sharedApplication removeObserver:m_objects->observer
                                         forKeyPath:@"effectiveAppearance"];
    [NSNotificationCenter.defaultCenter removeObserver:m_objects->observer];
    [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_objects->observer];
}

bool MacDesktopAppearance::isDark() const
{
    // Not compared by name: both have variants of higher contrast.
    NSString *match = [NSApplication.sharedApplication.effectiveAppearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return [match isEqual:NSAppearanceNameDarkAqua];
}

bool MacDesktopAppearance::reducesMotion() const
{
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
}

SystemColors MacDesktopAppearance::systemColors() const
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

QImage MacDesktopAppearance::symbol(const QString &name, double pointSize, bool isSemibold,
                                    double scale) const
{
    return systemSymbol(name, pointSize, isSemibold, scale);
}
