#import "Fakes/FakeStatusBar.h"

#include "Fakes/CallLog.h"

NSAttributedStringKey const NSFontAttributeName = @"NSFont";
NSAttributedStringKey const NSForegroundColorAttributeName = @"NSColor";
const NSFontWeight NSFontWeightMedium = 0.23;
const NSFontWeight NSFontWeightRegular = 0.0;

@implementation FakeFont
@end

@implementation NSFont
+ (NSFont *)monospacedDigitSystemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight
{
    FakeFont *font = [[FakeFont alloc] init];
    font->m_size = fontSize;
    font->m_weight = weight;
    return font;
}
@end

@implementation NSControl
@dynamic target, action;
@end
@implementation NSButton
@dynamic attributedTitle;
@end
@implementation NSStatusBarButton
@end

@implementation FakeStatusBarButton
- (NSAppearance *)effectiveAppearance
{
    return FakeStatusBar::appearance;
}
- (id)target
{
    return m_target;
}
- (void)setTarget:(id)target
{
    m_target = target;
}
- (SEL)action
{
    return m_action;
}
- (void)setAction:(SEL)action
{
    m_action = action;
}
- (NSAttributedString *)attributedTitle
{
    return m_title;
}
- (void)setAttributedTitle:(NSAttributedString *)title
{
    CallLog::note(QStringLiteral("setAttributedTitle"));
    m_title = [title copy];
}
- (NSString *)accessibilityLabel
{
    return m_label;
}
- (void)setAccessibilityLabel:(NSString *)label
{
    m_label = [label copy];
}
- (NSString *)toolTip
{
    return m_toolTip;
}
- (void)setToolTip:(NSString *)toolTip
{
    m_toolTip = [toolTip copy];
}
- (void)press
{
    [m_target performSelector:m_action withObject:self];
}
@end

@interface FakeStatusItem : NSStatusItem {
@public
    NSStatusBarButton *m_button;
}
@end

@implementation NSStatusItem
@dynamic button;
@end

@implementation FakeStatusItem
- (NSStatusBarButton *)button
{
    return m_button;
}
@end

@implementation NSStatusBar
+ (NSStatusBar *)systemStatusBar
{
    static NSStatusBar *const bar = [[NSStatusBar alloc] init];
    return bar;
}
- (NSStatusItem *)statusItemWithLength:(CGFloat)length
{
    CallLog::note(QStringLiteral("statusItemWithLength: %1").arg(length));
    FakeStatusItem *item = [[FakeStatusItem alloc] init];
    if (FakeStatusBar::givesButtons)
        item->m_button = FakeStatusBar::lastButton = [[FakeStatusBarButton alloc] init];
    return item;
}
- (void)removeStatusItem:(NSStatusItem *)item
{
    CallLog::note(QStringLiteral("removeStatusItem: %1").arg(item != nil));
}
@end
