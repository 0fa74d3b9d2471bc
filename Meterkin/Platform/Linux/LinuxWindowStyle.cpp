#include "Platform/Linux/LinuxWindowStyle.h"

#include "Platform/Linux/Compositing.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQuickWindow>

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
}

WindowStyle::TitleBar LinuxWindowStyle::makeOnboarding(QQuickWindow &window)
{
    window.setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    if (isComposited(m_connection))
        window.setColor(Qt::transparent);
    return TitleBar::None;
}

void LinuxWindowStyle::activate(QQuickWindow &window)
{
    if (window.windowStates().testFlag(Qt::WindowMinimized))
        window.showNormal();
    window.raise();
    window.requestActivate();
    // A window manager that does not know the window yet would not listen.
    if (window.isExposed())
        demandFocus(window);
    else
        window.installEventFilter(this);
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
    if (!m_connection.isOpen() || QGuiApplication::platformName() != u"xcb")
        return;
    // As a pager asks, since the user has just asked for it: the click went to a panel, which
    // window managers take for another program's.
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
