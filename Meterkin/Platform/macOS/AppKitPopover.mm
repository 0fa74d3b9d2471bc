#include "Platform/macOS/AppKitPopover.h"

#include "Platform/macOS/NativeView.h"

#include <QQuickItem>
#include <QScopedValueRollback>

#include <utility>

namespace {

constexpr int ForgetMilliseconds = 30000;
constexpr int ReportMilliseconds = 200; // a click is reported with its release
constexpr int WatchMilliseconds = 20;
constexpr CGFloat ScreenMargin = 24; // points: the arrow, and air at the other end
constexpr int AnyHeight = 10000;

} // namespace

NS_ASSUME_NONNULL_BEGIN

@interface MeterkinPopoverDelegate : NSObject <NSPopoverDelegate> {
@public
    AppKitPopover *m_owner; // null once it is gone
}
@end

NS_ASSUME_NONNULL_END

@implementation MeterkinPopoverDelegate

- (void)popoverWillClose:(NSNotification *)notification
{
    if (m_owner != nullptr)
        m_owner->handleClosing();
}

- (void)popoverDidClose:(NSNotification *)notification
{
    if (m_owner != nullptr)
        m_owner->handleClosed();
}

@end

namespace {

NSView *viewOf(WId identifier)
{
    return (__bridge NSView *)reinterpret_cast<void *>(identifier);
}

/// In the system's coordinates, in points.
QRect placeOnScreen(NSView *view)
{
    const NSRect place = [view.window convertRectToScreen:[view convertRect:view.bounds
                                                                     toView:nil]];
    return QRectF(place.origin.x, place.origin.y, place.size.width, place.size.height)
        .toAlignedRect();
}

/// The update framework's windows count as well; the menu bar's and the popover's have no title.
bool hasTitledWindow()
{
    NSArray<NSWindow *> *windows = NSApp.windows;
    for (NSUInteger i = 0; i < windows.count; ++i) {
        NSWindow *window = [windows objectAtIndex:i];
        if (window.visible && (window.styleMask & NSWindowStyleMaskTitled) != 0)
            return true;
    }
    return false;
}

} // namespace

struct AppKitPopover::Objects {
    NSPopover *popover;
    NSView *container;
    MeterkinPopoverDelegate *delegate;
};

AppKitPopover::AppKitPopover(FindButton findButton, QObject *parent)
    : QObject(parent)
    , m_findButton(std::move(findButton))
    , m_guard(ReportMilliseconds)
{
    m_clock.start();
    m_fitSoon.setSingleShot(true);
    connect(&m_fitSoon, &QTimer::timeout, this, &AppKitPopover::fit);
    m_watchButtons.setInterval(WatchMilliseconds);
    connect(&m_watchButtons, &QTimer::timeout, this, &AppKitPopover::watchButtons);
    m_forgetLater.setSingleShot(true);
    m_forgetLater.setTimerType(Qt::VeryCoarseTimer);
    m_forgetLater.setInterval(ForgetMilliseconds);
    connect(&m_forgetLater, &QTimer::timeout, this, &AppKitPopover::forget);
}

AppKitPopover::~AppKitPopover()
{
    if (m_objects)
        m_objects->delegate->m_owner = nullptr;
    close();
    forget();
}

void AppKitPopover::setContent(MakeContent make)
{
    close();
    forget();
    m_make = std::move(make);
    if (!m_objects && m_make)
        makePopover();
}

bool AppKitPopover::isShown() const
{
    return m_objects && m_objects->popover.shown;
}

bool AppKitPopover::swallowsClick(const QRect &)
{
    NSView *button = viewOf(m_findButton());
    return button != nil && button.window != nil
        && m_guard.swallows(placeOnScreen(button), m_clock.elapsed());
}

void AppKitPopover::show(const QRect &)
{
    NSView *button = viewOf(m_findButton());
    // The system raises an exception for a view that is in no window.
    if (button == nil || button.window == nil || !m_make || isShown())
        return;
    m_forgetLater.stop();
    NSScreen *screen = button.window.screen;
    m_room = screen == nil ? AnyHeight
                           : static_cast<int>(screen.visibleFrame.size.height - ScreenMargin);
    if (!m_window)
        makeWindow();
    fit();
    // Before it is shown: newer systems close the popover of a program that is not active, and
    // nothing of a hidden one is seen, which activation need not change.
    [NSApp unhideWithoutActivation];
    [NSApp activateIgnoringOtherApps:YES];
    [m_objects->popover showRelativeToRect:button.bounds
                                    ofView:button
                             preferredEdge:NSRectEdgeMinY];
    m_window->setVisible(true);
    NSWindow *window = m_objects->container.window;
    [window makeKeyWindow];
    [window makeFirstResponder:viewOf(*m_window)];
    m_window->focusContent();
}

void AppKitPopover::close()
{
    if (!isShown())
        return;
    const QScopedValueRollback closing(m_isClosingItself, true);
    [m_objects->popover performClose:nil];
}

void AppKitPopover::handleClosing()
{
    if (m_isClosingItself)
        return; // no press has closed it
    const NSPoint place = NSEvent.mouseLocation;
    m_guard.closedByPress(QPointF(place.x, place.y).toPoint(), m_clock.elapsed());
    watchButtons();
}

void AppKitPopover::handleClosed()
{
    // The end of an animation may be reported when it is on its way in again.
    if (!m_window || isShown())
        return;
    m_window->setVisible(false);
    m_forgetLater.start();
    // An active program without a window keeps the keyboard from all others.
    if (NSApp.active && !hasTitledWindow())
        [NSApp hide:nil];
}

void AppKitPopover::makePopover()
{
    m_objects = std::make_unique<Objects>();
    m_objects->container = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
    m_objects->delegate = [[MeterkinPopoverDelegate alloc] init];
    m_objects->delegate->m_owner = this;
    NSViewController *controller = [[NSViewController alloc] init];
    controller.view = m_objects->container;
    m_objects->popover = [[NSPopover alloc] init];
    m_objects->popover.behavior = NSPopoverBehaviorTransient;
    m_objects->popover.animates = YES;
    m_objects->popover.contentViewController = controller;
    m_objects->popover.delegate = m_objects->delegate;
}

void AppKitPopover::makeWindow()
{
    std::unique_ptr<QQuickItem> content = m_make();
    for (const auto signal :
         {&QQuickItem::implicitWidthChanged, &QQuickItem::implicitHeightChanged})
        connect(content.get(), signal, this, [this] { m_fitSoon.start(0); });
    m_window = std::make_unique<PopoverQuickWindow>(std::move(content));
    [m_objects->container addSubview:viewOf(*m_window)];
}

void AppKitPopover::fit()
{
    if (!m_window)
        return;
    const QSize size = m_window->fit(m_room);
    const NSRect place = NSMakeRect(0, 0, size.width(), size.height());
    m_objects->popover.contentSize = place.size;
    // Once it is shown, it is where the popover wants it to be.
    if (m_objects->container.window == nil)
        m_objects->container.frame = place;
    // Qt places the view of a window where the window would be on the screen.
    viewOf(*m_window).frame = place;
}

// Nobody is told of a release outside of the program's own views.
void AppKitPopover::watchButtons()
{
    if (NSEvent.pressedMouseButtons != 0) {
        m_watchButtons.start();
        return;
    }
    m_watchButtons.stop();
    m_guard.released(m_clock.elapsed());
}

void AppKitPopover::forget()
{
    m_forgetLater.stop();
    if (!m_window)
        return;
    if (m_window->handle() != nullptr) // at the program's end Qt has destroyed it already
        [viewOf(*m_window) removeFromSuperview];
    m_window.reset();
}
