#include "Platform/Linux/X11/Selection.h"

#include <utility>

namespace {

xcb_atom_t selectionAtom(X11Connection &connection, const QByteArray &name)
{
    return connection.atom(name + "_S" + QByteArray::number(connection.screenNumber()));
}

} // namespace

xcb_window_t x11SelectionOwner(X11Connection &connection, const QByteArray &name)
{
    const auto reply = connection.awaitReply(
        xcb_get_selection_owner_reply,
        xcb_get_selection_owner(connection.xcb(), selectionAtom(connection, name)));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

X11Selection::X11Selection(X11Connection &connection, const QByteArray &name, quint32 ownerEvents,
                           QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_name(name)
    , m_ownerEvents(ownerEvents)
{
    if (!m_connection.isOpen())
        return;
    connect(&m_connection, &X11Connection::eventReceived, this, &X11Selection::handleEvent);
    connect(&m_connection, &X11Connection::closed, this, [this] { setOwner(XCB_WINDOW_NONE); });
    // New owners announce themselves on the root window. All selections want the same of it.
    watch(m_connection.screen().root, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    find();
}

void X11Selection::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto &message = xcbEvent<xcb_client_message_event_t>(event);
        if (message.type == m_connection.atom("MANAGER")
            && message.data.data32[1] == selectionAtom(m_connection, m_name))
            find();
    } else if (type == XCB_DESTROY_NOTIFY
               && xcbEvent<xcb_destroy_notify_event_t>(event).window == m_owner) {
        find();
    }
}

void X11Selection::find()
{
    xcb_window_t owner = x11SelectionOwner(m_connection, m_name);
    // It may have died since it was named; its successor announces itself.
    if (owner != XCB_WINDOW_NONE && !watch(owner, XCB_EVENT_MASK_STRUCTURE_NOTIFY | m_ownerEvents))
        owner = XCB_WINDOW_NONE;
    setOwner(owner);
}

void X11Selection::setOwner(xcb_window_t owner)
{
    if (std::exchange(m_owner, owner) != owner)
        emit ownerChanged();
}

/// False when there is no such window any more.
bool X11Selection::watch(xcb_window_t window, quint32 events)
{
    return m_connection.isAccepted(xcb_change_window_attributes_checked(
        m_connection.xcb(), window, XCB_CW_EVENT_MASK, &events));
}
