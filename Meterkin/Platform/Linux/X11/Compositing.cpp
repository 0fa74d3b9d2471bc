#include "Platform/Linux/X11/Compositing.h"

#include "Platform/Linux/X11/Connection.h"

#include <QGuiApplication>

bool isComposited(X11Connection &connection)
{
    if (QGuiApplication::platformName() == u"wayland")
        return true;
    if (!connection.isOpen())
        return false;
    const xcb_atom_t selection =
        connection.atom("_NET_WM_CM_S" + QByteArray::number(connection.screenNumber()));
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection.xcb(), xcb_get_selection_owner(connection.xcb(), selection), nullptr));
    connection.dispatchSoon();
    return reply && reply->owner != XCB_WINDOW_NONE;
}
