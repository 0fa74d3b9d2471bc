#include "Platform/Linux/Tray/XembedManager.h"

#include <algorithm>
#include <utility>

namespace {

quint8 depthOfVisual(const xcb_screen_t &screen, xcb_visualid_t visual)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        const int count = xcb_depth_visuals_length(depth.data);
        const xcb_visualtype_t *visuals = xcb_depth_visuals(depth.data);
        if (std::any_of(visuals, visuals + count,
                        [visual](const xcb_visualtype_t &v) { return v.visual_id == visual; }))
            return depth.data->depth;
    }
    return 0;
}

} // namespace

XembedManager::XembedManager(X11Connection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
{
    if (!m_connection.isOpen())
        return;
    connect(&m_connection, &X11Connection::eventReceived, this, &XembedManager::handleEvent);
    connect(&m_connection, &X11Connection::closed, this, [this] {
        m_window = XCB_WINDOW_NONE;
        emit windowChanged();
    });
    m_selection =
        m_connection.atom("_NET_SYSTEM_TRAY_S" + QByteArray::number(m_connection.screenNumber()));
    // A new tray announces itself on the root window.
    constexpr quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.xcb(), m_connection.screen().root, XCB_CW_EVENT_MASK,
                                 &mask);
    find();
}

void XembedManager::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto &message = xcbEvent<xcb_client_message_event_t>(event);
        if (message.type == m_connection.atom("MANAGER") && message.data.data32[1] == m_selection)
            find();
    } else if (type == XCB_DESTROY_NOTIFY
               && xcbEvent<xcb_destroy_notify_event_t>(event).window == m_window) {
        find();
    }
}

void XembedManager::find()
{
    const auto cookie = xcb_get_selection_owner(m_connection.xcb(), m_selection);
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection.xcb(), cookie, nullptr));
    xcb_window_t owner = reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    if (owner != XCB_WINDOW_NONE) {
        constexpr quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        const auto request = xcb_change_window_attributes_checked(m_connection.xcb(), owner,
                                                                  XCB_CW_EVENT_MASK, &mask);
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_connection.xcb(), request));
        // It may have died since it was named; its successor will announce itself.
        if (error)
            owner = XCB_WINDOW_NONE;
    }
    m_connection.dispatchSoon();
    if (std::exchange(m_window, owner) == owner)
        return;
    if (m_window != XCB_WINDOW_NONE)
        readVisual();
    emit windowChanged();
}

void XembedManager::readVisual()
{
    const QList<quint32> visual = m_connection.words(
        m_window, m_connection.atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID);
    m_visual = visual.isEmpty() ? 0 : visual.first();
    m_depth = depthOfVisual(m_connection.screen(), m_visual);
    if (m_depth == 0) {
        m_visual = m_connection.screen().root_visual;
        m_depth = m_connection.screen().root_depth;
    }
}
