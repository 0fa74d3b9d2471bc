#include "Platform/Linux/X11/Focus.h"

#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds LateFocus{500};

} // namespace

X11Focus::X11Focus(X11Connection &connection, X11Presses &presses, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_presses(presses)
{
    connect(&m_connection, &X11Connection::eventReceived, this, &X11Focus::handleEvent);
}

void X11Focus::take(xcb_window_t window)
{
    if (!m_connection.isOpen())
        return;
    // On this connection, since Qt does not distinguish grabs from real changes of focus.
    constexpr quint32 events = XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(m_connection.xcb(), window, XCB_CW_EVENT_MASK, &events);
    if (const xcb_window_t previous = focused(); previous != window)
        m_previous = previous;
    m_window = window;
    m_isWatching = true;
    m_sinceTaken.start();
    m_pointer = m_presses.pointer(m_connection.screen().root).onRoot;
    setFocus(window);
}

void X11Focus::giveBack()
{
    m_isWatching = false;
    const xcb_window_t window = std::exchange(m_window, xcb_window_t{XCB_WINDOW_NONE});
    if (window == XCB_WINDOW_NONE || !m_connection.isOpen() || focused() != window)
        return;
    setFocus(m_previous); // it may be gone: the server's error is ignored
}

void X11Focus::handleEvent(const xcb_generic_event_t *event)
{
    if ((event->response_type & 0x7f) != XCB_FOCUS_OUT)
        return;
    const auto &change = xcbEvent<xcb_focus_out_event_t>(event);
    // A grab, such as that of a hot key, takes the keyboard only for a moment.
    if (change.event != m_window || !m_isWatching || change.mode == XCB_NOTIFY_MODE_GRAB
        || change.mode == XCB_NOTIFY_MODE_UNGRAB || change.detail == XCB_NOTIFY_DETAIL_POINTER)
        return;
    const xcb_window_t next = focused();
    // A late event: the focus has been given back and taken again since.
    if (next == m_window)
        return;
    if (change.mode == XCB_NOTIFY_MODE_NORMAL && isNoChoice(next)) {
        m_previous = next;
        setFocus(m_window);
        return;
    }
    m_isWatching = false;
    emit lost();
}

/// Whether the window got the focus though the user did not turn to it.
bool X11Focus::isNoChoice(xcb_window_t focus)
{
    if (!m_presses.isAvailable()) // by which we would know
        return false;
    // A window manager may be late with what came before: KWin gives the focus to the window that
    // had it once the notification whose click has shown us is gone.
    return !m_sinceTaken.hasExpired(LateFocus.count()) || isUnderPointer(focus);
}

/// Whether that is because the pointer moved over it. Where the focus follows the mouse, that
/// happens on the way from the panel to the popover.
bool X11Focus::isUnderPointer(xcb_window_t focus)
{
    const X11Presses::Pointer pointer = m_presses.pointer(m_connection.screen().root);
    if (pointer.isButtonDown || pointer.onRoot == std::exchange(m_pointer, pointer.onRoot))
        return false;
    xcb_window_t window = focus;
    while (window > XCB_INPUT_FOCUS_POINTER_ROOT && window != pointer.topLevel) {
        const auto tree = m_connection.awaitReply(xcb_query_tree_reply,
                                                  xcb_query_tree(m_connection.xcb(), window));
        window = tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
    }
    return window != XCB_WINDOW_NONE && window == pointer.topLevel;
}

void X11Focus::setFocus(xcb_window_t window)
{
    xcb_set_input_focus(m_connection.xcb(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    xcb_flush(m_connection.xcb());
}

xcb_window_t X11Focus::focused()
{
    const auto reply =
        m_connection.awaitReply(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection.xcb()));
    return reply ? reply->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}
