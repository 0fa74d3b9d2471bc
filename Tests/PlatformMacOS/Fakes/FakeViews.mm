#import "Fakes/FakeViews.h"

#include "Fakes/CallLog.h"

#include <unordered_map>

namespace {

struct ViewState {
    NSRect frame = {};
    NSView *superview = nil;
    NSWindow *window = nil; ///< of one that is a window's content
};

struct WindowState {
    QString name;
    NSPoint place = {};
    NSScreen *screen = nil;
    NSColor *backgroundColor = nil;
    NSWindowStyleMask styleMask = 0;
    bool isVisible = false;
};

bool isApplicationActive = false;

ViewState &stateOf(NSView *view)
{
    static std::unordered_map<NSView *, ViewState> states;
    return states[view];
}

WindowState &stateOf(NSWindow *window)
{
    static std::unordered_map<NSWindow *, WindowState> states;
    return states[window];
}

CGFloat &freeHeightOf(NSScreen *screen)
{
    static std::unordered_map<NSScreen *, CGFloat> heights;
    return heights[screen];
}

void note(NSWindow *window, const char *call, NSUInteger value)
{
    CallLog::note(
        QStringLiteral("%1 %2 %3").arg(stateOf(window).name, QLatin1String(call)).arg(value));
}

} // namespace

__kindof NSApplication *NSApp = nil;

void placeInWindow(NSView *view, const QString &name, NSPoint place, CGFloat freeHeight)
{
    stateOf(view).window = name.isEmpty() ? nil : [[NSWindow alloc] init];
    if (name.isEmpty())
        return;
    WindowState &state = stateOf(stateOf(view).window);
    state.name = name;
    state.place = place;
    state.screen = [[NSScreen alloc] init];
    freeHeightOf(state.screen) = freeHeight;
}

@implementation NSResponder
@end

@implementation NSScreen
- (NSRect)visibleFrame
{
    return NSMakeRect(0, 0, 1200, freeHeightOf(self));
}
@end

@implementation NSView

- (instancetype)initWithFrame:(NSRect)frame
{
    self = [super init];
    stateOf(self).frame = frame;
    return self;
}
- (NSRect)frame
{
    return stateOf(self).frame;
}
- (void)setFrame:(NSRect)frame
{
    stateOf(self).frame = frame;
}
- (NSRect)bounds
{
    return NSMakeRect(0, 0, self.frame.size.width, self.frame.size.height);
}
- (NSView *)superview
{
    return stateOf(self).superview;
}
- (NSWindow *)window
{
    return self.superview != nil ? self.superview.window : stateOf(self).window;
}
- (void)addSubview:(NSView *)view
{
    stateOf(view).superview = self;
}
- (void)removeFromSuperview
{
    stateOf(self).superview = nil;
}
- (NSRect)convertRect:(NSRect)rect toView:(NSView *)view
{
    (void)view;
    return NSMakeRect(rect.origin.x + self.frame.origin.x, rect.origin.y + self.frame.origin.y,
                      rect.size.width, rect.size.height);
}

@end

@implementation NSWindow

@dynamic titlebarAppearsTransparent, titleVisibility, movableByWindowBackground, level;

- (NSScreen *)screen
{
    return stateOf(self).screen;
}
- (NSRect)convertRectToScreen:(NSRect)rect
{
    const NSPoint place = stateOf(self).place;
    return NSMakeRect(rect.origin.x + place.x, rect.origin.y + place.y, rect.size.width,
                      rect.size.height);
}
- (void)setTitlebarAppearsTransparent:(BOOL)transparent
{
    note(self, "titlebarAppearsTransparent", transparent);
}
- (void)setTitleVisibility:(NSWindowTitleVisibility)visibility
{
    note(self, "titleVisibility", static_cast<NSUInteger>(visibility));
}
- (BOOL)isVisible
{
    return stateOf(self).isVisible;
}
- (NSWindowStyleMask)styleMask
{
    return stateOf(self).styleMask;
}
- (void)setStyleMask:(NSWindowStyleMask)mask
{
    note(self, "styleMask", mask);
    stateOf(self).styleMask = mask;
}
- (void)setMovableByWindowBackground:(BOOL)movable
{
    note(self, "movableByWindowBackground", movable);
}
- (NSColor *)backgroundColor
{
    return stateOf(self).backgroundColor;
}
- (void)setBackgroundColor:(NSColor *)color
{
    CallLog::note(stateOf(self).name + QStringLiteral(" backgroundColor"));
    stateOf(self).backgroundColor = color;
}
- (void)setLevel:(NSWindowLevel)level
{
    note(self, "level", static_cast<NSUInteger>(level));
}
- (void)makeKeyWindow
{
    CallLog::note(stateOf(self).name + QStringLiteral(" makeKeyWindow"));
}
- (void)makeKeyAndOrderFront:(id)sender
{
    note(self, "makeKeyAndOrderFront", sender != nil);
    stateOf(self).isVisible = true;
}
- (BOOL)makeFirstResponder:(NSResponder *)responder
{
    note(self, "makeFirstResponder",
         [responder isKindOfClass:[NSView class]]
             && static_cast<NSView *>(responder).window == self);
    return YES;
}

@end

@implementation NSApplication

+ (void)load
{
    NSApp = [[NSApplication alloc] init];
}
+ (NSApplication *)sharedApplication
{
    return NSApp;
}
- (void)activateIgnoringOtherApps:(BOOL)ignoring
{
    CallLog::note(QStringLiteral("activateIgnoringOtherApps %1").arg(ignoring));
    isApplicationActive = true;
}
- (BOOL)isActive
{
    return isApplicationActive;
}
- (NSArray<NSWindow *> *)windows
{
    return FakeApplication::windows;
}
- (void)unhideWithoutActivation
{
    CallLog::note(QStringLiteral("unhideWithoutActivation"));
}
- (void)hide:(id)sender
{
    CallLog::note(QStringLiteral("hide %1").arg(sender != nil));
    isApplicationActive = false;
}

@end
