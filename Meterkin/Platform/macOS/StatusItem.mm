#include "Platform/macOS/StatusItem.h"

#include "Platform/Log.h"
#include "Platform/macOS/FoundationValues.h"
#include "Platform/macOS/Windows/Colors.h"

NS_ASSUME_NONNULL_BEGIN

@interface MeterkinStatusItemTarget : NSObject {
@public
    MacStatusItem *owner; // null after its destruction
}
- (void)statusItemClicked;
@end

NS_ASSUME_NONNULL_END

@implementation MeterkinStatusItemTarget

- (void)statusItemClicked
{
    if (owner != nullptr)
        emit owner->clicked();
}

@end

namespace {

NSColor *dynamicColor(SystemColor color)
{
    switch (color) {
    case SystemColor::Green:
        return NSColor.systemGreenColor;
    case SystemColor::Yellow:
        return NSColor.systemYellowColor;
    case SystemColor::Red:
        return NSColor.systemRedColor;
    }
    Q_UNREACHABLE();
}

} // namespace

struct MacStatusItem::Objects {
    NSStatusItem *item;
    MeterkinStatusItemTarget *target;
    NSFont *font;
};

MacStatusItem::MacStatusItem(QObject *parent)
    : StatusItem(parent)
    , m_objects(
          new Objects{[NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength],
                      [[MeterkinStatusItemTarget alloc] init],
                      [NSFont monospacedDigitSystemFontOfSize:AttributedTitle::FontSize
                                                       weight:NSFontWeightMedium]})
{
    m_objects->target->owner = this;
    NSStatusBarButton *button = m_objects->item.button;
    if (button == nil)
        qCWarning(logTray, "The menu bar gave an item without a button: no title is shown");
    button.target = m_objects->target;
    button.action = @selector(statusItemClicked);
}

MacStatusItem::~MacStatusItem()
{
    // AppKit may hold the button for longer, and send its action.
    m_objects->target->owner = nullptr;
    [NSStatusBar.systemStatusBar removeStatusItem:m_objects->item];
}

bool MacStatusItem::hasButton() const
{
    return m_objects->item.button != nil;
}

// Each call has an autorelease pool of its own: Qt drains its pool at the next native event, which
// may be hours away.

QColor MacStatusItem::systemColor(SystemColor color) const
{
    __block QColor result;
    @autoreleasepool {
        // The menu bar can be dark on a light desktop, and the other way round.
        [m_objects->item.button.effectiveAppearance
            performAsCurrentDrawingAppearance:^{ result = colorOf(dynamicColor(color)); }];
    }
    return result;
}

void MacStatusItem::setTitle(const AttributedTitle &title)
{
    if (!hasButton() || m_title == title)
        return;
    m_title = title;
    @autoreleasepool {
        NSColor *foreground = appKitColor(title.color);
        for (const SystemColor color :
             {SystemColor::Green, SystemColor::Yellow, SystemColor::Red}) {
            if (title.color == systemColor(color))
                foreground = dynamicColor(color);
        }
        NSDictionary *attributes = @{
            NSForegroundColorAttributeName : foreground,
            NSFontAttributeName : m_objects->font,
        };
        m_objects->item.button.attributedTitle =
            [[NSAttributedString alloc] initWithString:foundationText(title.text)
                                            attributes:attributes];
    }
}

void MacStatusItem::setAccessibilityLabel(const QString &label)
{
    @autoreleasepool {
        m_objects->item.button.accessibilityLabel = foundationText(label);
    }
}

void MacStatusItem::setToolTipSource(std::function<QString()> source)
{
    m_toolTipSource = std::move(source);
}

void MacStatusItem::refreshToolTip()
{
    @autoreleasepool {
        m_objects->item.button.toolTip = foundationText(m_toolTipSource());
    }
}

WId MacStatusItem::button() const
{
    return reinterpret_cast<WId>((__bridge void *)m_objects->item.button);
}
