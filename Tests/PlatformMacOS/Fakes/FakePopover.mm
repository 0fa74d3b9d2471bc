#import "Fakes/FakePopover.h"

#include "Fakes/CallLog.h"
#import "Fakes/FakeViews.h"

#include <utility>

namespace {

constexpr CGFloat Inset = 13; // of the content in its frame

struct PopoverState {
    id<NSPopoverDelegate> delegate = nil;
    NSViewController *controller = nil;
    NSView *view = nil;
    NSSize contentSize = {};
    bool isShown = false;
    bool isClosing = false;
} state;

NSNotification *closing()
{
    static NSNotification *const notification = [[NSNotification notificationWithName:@"closing"
                                                                               object:nil] retain];
    return notification;
}

} // namespace

void FakePopover::startClosing()
{
    state.isShown = false;
    state.isClosing = true;
    [state.delegate popoverWillClose:closing()];
}

void FakePopover::finishClosing()
{
    if (!std::exchange(state.isClosing, false))
        return;
    if (!state.isShown)
        placeInWindow(state.view, QString());
    [state.delegate popoverDidClose:closing()];
}

@implementation NSViewController
- (NSView *)view
{
    return state.view;
}
- (void)setView:(NSView *)view
{
    state.view = view;
}
@end

@implementation NSPopover

@dynamic behavior, animates;

- (instancetype)init
{
    self = [super init];
    FakePopover::last = self;
    return self;
}
- (id<NSPopoverDelegate>)delegate
{
    return state.delegate;
}
- (void)setDelegate:(id<NSPopoverDelegate>)delegate
{
    state.delegate = delegate;
}
- (NSViewController *)contentViewController
{
    return state.controller;
}
- (void)setContentViewController:(NSViewController *)controller
{
    state.controller = controller;
}
- (void)setBehavior:(NSPopoverBehavior)behavior
{
    CallLog::note(QStringLiteral("behavior %1").arg(behavior));
}
- (void)setAnimates:(BOOL)animates
{
    CallLog::note(QStringLiteral("animates %1").arg(animates));
}
- (NSSize)contentSize
{
    return state.contentSize;
}
- (void)setContentSize:(NSSize)size
{
    CallLog::note(QStringLiteral("contentSize %1x%2").arg(size.width).arg(size.height));
    state.contentSize = size;
    if (state.isShown)
        state.view.frame = NSMakeRect(Inset, Inset, size.width, size.height);
}
- (BOOL)isShown
{
    return state.isShown;
}
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView *)view preferredEdge:(NSRectEdge)edge
{
    if (view.window == nil || state.controller == nil)
        [NSException raise:NSInvalidArgumentException format:@"no window to show it in"];
    CallLog::note(QStringLiteral("show %1 %2 %3 %4 edge %5")
                      .arg(rect.origin.x)
                      .arg(rect.origin.y)
                      .arg(rect.size.width)
                      .arg(rect.size.height)
                      .arg(edge));
    placeInWindow(state.view, QStringLiteral("popover"));
    state.view.frame = NSMakeRect(Inset, Inset, state.contentSize.width, state.contentSize.height);
    state.isShown = true;
}
- (void)performClose:(id)sender
{
    CallLog::note(QStringLiteral("performClose %1").arg(sender != nil));
    FakePopover::startClosing();
}

@end
