#include "Platform/Linux/X11/Presses.h"

#include "Platform/Log.h"

#include <xcb/xinput.h>

#include <utility>

namespace {

// From 2.1 on raw events are reported also during grabs of other programs, such as a panel's.
constexpr quint16 MajorVersion = 2;
constexpr quint16 MinorVersion = 2;

constexpr quint32 FirstWheelButton = 4;
constexpr quint32 LastWheelButton = 7;
constexpr quint16 AnyButton = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;

struct EventMask {
    xcb_input_event_mask_t head;
    quint32 mask;
};

} // namespace

X11Presses::X11Presses(X11Connection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_catcher(connection)
{
    if (!m_connection.isOpen())
        return;
    connect(&m_connection, &X11Connection::eventReceived, this, &X11Presses::handleEvent);
    if (m_connection.isXwayland())
        return;
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(xcb, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return;
    const auto version =
        m_connection.awaitReply(xcb_input_xi_query_version_reply,
                                xcb_input_xi_query_version(xcb, MajorVersion, MinorVersion));
    if (version
        && (version->major_version > MajorVersion
            || (version->major_version == MajorVersion && version->minor_version > 0)))
        m_opcode = extension->major_opcode;
}

void X11Presses::start(const QRect &popup)
{
    m_isStopping = false;
    if (m_connection.isXwayland()) {
        m_catcher.open(popup);
        return;
    }
    if (!isAvailable() && !std::exchange(m_isLackReported, true))
        qCWarning(logWindows,
                  "The X server lacks the X Input Extension 2.1: a click elsewhere closes "
                  "the popover only if it moves the keyboard focus");
    select(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE);
}

void X11Presses::stop()
{
    if (!m_connection.isOpen() || (m_selected == 0 && m_catcher.window() == XCB_WINDOW_NONE))
        return;
    // The release goes the way of its press: not to the panel, which would take it for a click.
    m_isStopping = pointer(m_connection.screen().root).isButtonDown;
    if (!m_isStopping)
        end();
    else if (m_selected != 0)
        select(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE);
}

X11Presses::Pointer X11Presses::pointer(xcb_window_t window)
{
    const auto reply = m_connection.awaitReply(xcb_query_pointer_reply,
                                               xcb_query_pointer(m_connection.xcb(), window));
    if (!reply)
        return {};
    return {QPoint(reply->win_x, reply->win_y), QPoint(reply->root_x, reply->root_y),
            (reply->mask & AnyButton) != 0, reply->child};
}

void X11Presses::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    if (type == XCB_BUTTON_PRESS || type == XCB_BUTTON_RELEASE) {
        const auto &button = xcbEvent<xcb_button_press_event_t>(event);
        if (button.event == m_catcher.window())
            report(button.detail, type == XCB_BUTTON_PRESS);
    } else if (type == XCB_GE_GENERIC && m_opcode != 0
               && xcbEvent<xcb_ge_generic_event_t>(event).extension == m_opcode) {
        const auto &raw = xcbEvent<xcb_input_raw_button_press_event_t>(event);
        if (raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS
            || raw.event_type == XCB_INPUT_RAW_BUTTON_RELEASE)
            report(raw.detail, raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS);
    }
}

void X11Presses::report(quint32 button, bool isPress)
{
    if (button >= FirstWheelButton && button <= LastWheelButton)
        return;
    if (m_isStopping)
        end();
    else if (isPress)
        emit pressed();
    if (!isPress)
        emit released();
}

void X11Presses::end()
{
    m_isStopping = false;
    m_catcher.close();
    select(0);
}

void X11Presses::select(quint32 mask)
{
    if (!isAvailable() || !m_connection.isOpen() || std::exchange(m_selected, mask) == mask)
        return;
    const EventMask events{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
    xcb_input_xi_select_events(m_connection.xcb(), m_connection.screen().root, 1, &events.head);
    xcb_flush(m_connection.xcb());
}
