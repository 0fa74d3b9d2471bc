#include "Platform/Linux/Windows/WindowStyle.h"

#include "Platform/Linux/Windows/X11Properties.h"
#include "Platform/Linux/X11/DisplayServer.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QQuickWindow>

namespace {

constexpr quint32 EveryDesktop = 0xffffffff;

constexpr int MiddleLightness = 128;
constexpr QColor LightTitle(0xf2, 0xf2, 0xf4);
constexpr QColor DarkTitle(0x1d, 0x1d, 0x1f);
constexpr QColor DimmedTitle(0x8a, 0x8a, 0x8e); // of a window that is not active

} // namespace

LinuxWindowStyle::LinuxWindowStyle(X11Connection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
{
}

void LinuxWindowStyle::makeTitled(QQuickWindow &window)
{
    // Window managers neither tile nor minimise a dialog.
    window.setFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                    | Qt::WindowCloseButtonHint);
    disconnect(&window, &QQuickWindow::colorChanged, this, nullptr); // where it is made again
    connect(&window, &QQuickWindow::colorChanged, this, [this, &window] { colorTitleBar(window); });
}

WindowStyle::TitleBar LinuxWindowStyle::makeOnboarding(QQuickWindow &window)
{
    window.setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    if (isComposited(m_connection))
        window.setColor(Qt::transparent);
    return TitleBar::None;
}

/// Light or dark, as the window is.
void LinuxWindowStyle::colorTitleBar(QQuickWindow &window)
{
    const bool isDark = window.color().lightness() < MiddleLightness;
    if (isOnX11(m_connection)) {
        if (window.handle() != nullptr)
            setX11DarkTitleBar(m_connection, window, isDark);
        return;
    }
    // Where the compositor draws none, Qt does, in the colours that the palette has by then.
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::Window, window.color());
    palette.setColor(QPalette::WindowText, isDark ? LightTitle : DarkTitle);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, DimmedTitle);
    QGuiApplication::setPalette(palette);
    if (window.frameMargins().isNull())
        return;
    const Qt::WindowFlags flags = window.flags();
    window.setFlags(flags | Qt::FramelessWindowHint);
    window.setFlags(flags);
}

void LinuxWindowStyle::present(QQuickWindow &window)
{
    const bool isInSight = window.isVisible() && isOnPresentWorkspace(window);
    if (!isInSight) {
        // Shown again, it is a new window to the desktop, which puts those on the present
        // workspace.
        window.hide();
        window.create();
        colorTitleBar(window);
        window.setPosition(window.position()); // else the window manager chooses another place
        window.showNormal();
    }
    window.raise();
    window.requestActivate();
    // Window managers ignore requests for a window that they do not manage yet.
    if (isInSight)
        demandFocus(window);
    else
        window.installEventFilter(this);
}

void LinuxWindowStyle::presentUnasked(QQuickWindow &window)
{
    // With this property Qt's xcb plugin sets the user time to 0: window managers give no focus.
    window.setProperty("_q_showWithoutActivating", true);
    window.show();
}

/// Whether the user sees it, other windows apart.
bool LinuxWindowStyle::isOnPresentWorkspace(const QQuickWindow &window) const
{
    if (!window.isExposed())
        return false;
    if (isOnX11(m_connection)) {
        const auto desktop = [this](xcb_window_t of, const char *property) {
            return m_connection.words(of, m_connection.atom(property), XCB_ATOM_CARDINAL);
        };
        const QList<quint32> own =
            desktop(static_cast<xcb_window_t>(window.winId()), "_NET_WM_DESKTOP");
        const QList<quint32> current = desktop(m_connection.screen().root, "_NET_CURRENT_DESKTOP");
        if (!own.isEmpty() && !current.isEmpty())
            return own.first() == current.first() || own.first() == EveryDesktop;
    }
    return window.isActive(); // Wayland and some window managers do not report workspaces
}

bool LinuxWindowStyle::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose) {
        const auto *window = static_cast<QQuickWindow *>(watched);
        if (window->isExposed()) {
            watched->removeEventFilter(this);
            demandFocus(*window);
        }
    }
    return QObject::eventFilter(watched, event);
}

void LinuxWindowStyle::demandFocus(const QQuickWindow &window)
{
    if (!isOnX11(m_connection))
        return;
    // Window managers refuse the focus to programs that the user did not click last, and the click
    // went to the panel. They grant it to a pager. ("_NET_ACTIVE_WINDOW" in the Extended Window
    // Manager Hints)
    constexpr quint32 fromPager = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = m_connection.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = fromPager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(m_connection.xcb(), 0, m_connection.screen().root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection.xcb());
}
