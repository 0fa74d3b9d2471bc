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
{
    if (!m_connection.isOpen())
        return;
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(xcb, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return;
    const auto version =
        m_connection.awaitReply(xcb_input_xi_query_version_reply,
                                xcb_input_xi_query_version(xcb, MajorVersion, MinorVersion));
    if (!version || version->major_version < MajorVersion
        || (version->major_version == MajorVersion && version->minor_version == 0))
        return;
    m_opcode = extension->major_opcode;
    connect(&m_connection, &X11Connection::eventReceived, this, &X11Presses::handleEvent);
}

void X11Presses::start()
{
    if (!isAvailable() && !std::exchange(m_isLackReported, true))
        qCWarning(logWindows,
                  "The X server lacks the X Input Extension 2.1: a click elsewhere closes "
                  "the popover only if it moves the keyboard focus");
    select(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE);
}

void X11Presses::stop()
{
    if (!m_connection.isOpen() || m_selected == 0)
        return;
    select(pointer(m_connection.screen().root).isButtonDown
               ? quint32{XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE}
               : 0U);
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
    if ((event->response_type & 0x7f) != XCB_GE_GENERIC
        || xcbEvent<xcb_ge_generic_event_t>(event).extension != m_opcode)
        return;
    const auto &raw = xcbEvent<xcb_input_raw_button_press_event_t>(event);
    if (raw.detail >= FirstWheelButton && raw.detail <= LastWheelButton)
        return;
    if (raw.event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        emit pressed();
    } else if (raw.event_type == XCB_INPUT_RAW_BUTTON_RELEASE) {
        if (m_selected == XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE)
            select(0);
        emit released();
    }
}

void X11Presses::select(quint32 mask)
{
    if (!isAvailable() || !m_connection.isOpen() || std::exchange(m_selected, mask) == mask)
        return;
    const EventMask events{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
    xcb_input_xi_select_events(m_connection.xcb(), m_connection.screen().root, 1, &events.head);
    xcb_flush(m_connection.xcb());
}
