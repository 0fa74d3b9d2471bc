#include "Platform/macOS/Windows/PopoverContainer.h"

#include "Platform/Log.h"
#include "Platform/macOS/Windows/NativeView.h"

#include <QQuickItem>
#include <QScopedValueRollback>

#include <utility>

namespace {

constexpr int ForgetMilliseconds = 30000;
constexpr int ReportMilliseconds = 200; // a click is reported with its release
constexpr int WatchMilliseconds = 20;
constexpr CGFloat ScreenMargin = 24; // points, for the arrow and a gap at the other end
constexpr int AnyHeight = 10000;

} // namespace

NS_ASSUME_NONNULL_BEGIN

@interface MeterkinPopoverDelegate : NSObject <NSPopoverDelegate> {
@public
    MacPopoverContainer *owner; // null after its destruction
}
@end

NS_ASSUME_NONNULL_END

@implementation MeterkinPopoverDelegate

- (void)popoverWillClose:(NSNotification *)notification
{
    if (owner != nullptr)
        owner->handleClosing();
}

- (void)popoverDidClose:(NSNotification *)notification
{
    if (owner != nullptr)
        owner->handleClosed();
}

@end

namespace {

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

struct MacPopoverContainer::Objects {
    NSPopover *popover;
    NSView *container;
    MeterkinPopoverDelegate *delegate;
};

MacPopoverContainer::MacPopoverContainer(FindButton findButton, QObject *parent)
    : QObject(parent)
    , m_findButton(std::move(findButton))
    , m_guard(ReportMilliseconds)
{
    m_clock.start();
    m_fitSoon.setSingleShot(true);
    connect(&m_fitSoon, &QTimer::timeout, this, &MacPopoverContainer::fit);
    m_watchButtons.setInterval(WatchMilliseconds);
    connect(&m_watchButtons, &QTimer::timeout, this, &MacPopoverContainer::watchButtons);
    m_forgetLater.setSingleShot(true);
    m_forgetLater.setTimerType(Qt::VeryCoarseTimer);
    m_forgetLater.setInterval(ForgetMilliseconds);
    connect(&m_forgetLater, &QTimer::timeout, this, &MacPopoverContainer::forget);
}

MacPopoverContainer::~MacPopoverContainer()
{
    if (m_objects)
        m_objects->delegate->owner = nullptr;
    close();
    forget();
}

void MacPopoverContainer::setContent(MakeContent make)
{
    close();
    forget();
    m_make = std::move(make);
    if (!m_objects && m_make)
        makePopover();
}

bool MacPopoverContainer::isShown() const
{
    return m_objects && m_objects->popover.shown;
}

bool MacPopoverContainer::swallowsClick(const QRect &)
{
    NSView *button = viewOf(m_findButton());
    return button != nil && button.window != nil
        && m_guard.swallows(placeOnScreen(button), m_clock.elapsed());
}

void MacPopoverContainer::show(const QRect &)
{
    NSView *button = viewOf(m_findButton());
    if (!m_make || isShown())
        return;
    if (button == nil || button.window == nil) { // for which AppKit would raise an exception
        qCWarning(logWindows, "The status item is in no window: the dashboard is not shown");
        return;
    }
    m_forgetLater.stop();
    NSScreen *screen = button.window.screen;
    m_room = screen == nil ? AnyHeight
                           : static_cast<int>(screen.visibleFrame.size.height - ScreenMargin);
    if (!m_window)
        makeWindow();
    if (!m_window)
        return;
    fit();
    // Before it is shown, because newer systems close the popover of an inactive program.
    // Activation alone need not unhide the program.
    [NSApp unhideWithoutActivation];
    [NSApp activateIgnoringOtherApps:YES];
    [m_objects->popover showRelativeToRect:button.bounds
                                    ofView:button
                             preferredEdge:NSRectEdgeMinY];
    m_window->setVisible(true);
    NSWindow *window = m_objects->container.window;
    [window makeKeyWindow];
    [window makeFirstResponder:viewOf(m_window->winId())];
    m_window->focusContent();
}

void MacPopoverContainer::close()
{
    if (!isShown())
        return;
    const QScopedValueRollback closing(m_isClosingItself, true);
    [m_objects->popover performClose:nil];
}

void MacPopoverContainer::handleClosing()
{
    if (m_isClosingItself)
        return; // by the program, not by a press
    const NSPoint place = NSEvent.mouseLocation;
    m_guard.closedByPress(QPointF(place.x, place.y).toPoint(), m_clock.elapsed());
    watchButtons();
}

void MacPopoverContainer::handleClosed()
{
    // A closing animation may end after the popover was opened again.
    if (!m_window || isShown())
        return;
    m_window->setVisible(false);
    m_forgetLater.start();
    // Else the program would stay active and keep the keyboard.
    if (NSApp.active && !hasTitledWindow())
        [NSApp hide:nil];
}

void MacPopoverContainer::makePopover()
{
    m_objects = std::make_unique<Objects>();
    m_objects->container = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
    m_objects->delegate = [[MeterkinPopoverDelegate alloc] init];
    m_objects->delegate->owner = this;
    NSViewController *controller = [[NSViewController alloc] init];
    controller.view = m_objects->container;
    m_objects->popover = [[NSPopover alloc] init];
    m_objects->popover.behavior = NSPopoverBehaviorTransient;
    m_objects->popover.animates = YES;
    m_objects->popover.contentViewController = controller;
    m_objects->popover.delegate = m_objects->delegate;
}

void MacPopoverContainer::makeWindow()
{
    std::unique_ptr<QQuickItem> content = m_make();
    if (!content)
        return;
    for (const auto signal :
         {&QQuickItem::implicitWidthChanged, &QQuickItem::implicitHeightChanged})
        connect(content.get(), signal, this, [this] { m_fitSoon.start(0); });
    m_window = std::make_unique<MacPopoverWindow>(std::move(content));
    [m_objects->container addSubview:viewOf(m_window->winId())];
}

void MacPopoverContainer::fit()
{
    if (!m_window)
        return;
    const QSize size = m_window->fit(m_room);
    const NSRect place = NSMakeRect(0, 0, size.width(), size.height());
    m_objects->popover.contentSize = place.size;
    // Once it is shown, the popover places it.
    if (m_objects->container.window == nil)
        m_objects->container.frame = place;
    // Qt has placed the view where the window would be on the screen.
    viewOf(m_window->winId()).frame = place;
}

// Polled, since macOS reports no release outside the program's own views.
void MacPopoverContainer::watchButtons()
{
    if (NSEvent.pressedMouseButtons != 0) {
        m_watchButtons.start();
        return;
    }
    m_watchButtons.stop();
    m_guard.released(m_clock.elapsed());
}

void MacPopoverContainer::forget()
{
    m_forgetLater.stop();
    if (!m_window)
        return;
    if (m_window->handle() != nullptr) // null when Qt destroyed it at the program's end
        [viewOf(m_window->winId()) removeFromSuperview];
    m_window.reset();
}
