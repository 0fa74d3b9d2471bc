#include "Platform/Linux/X11/DisplayServer.h"

#include "Platform/Linux/X11/Selection.h"

#include <QGuiApplication>

bool isOnX11(const X11Connection &connection)
{
    return connection.isOpen() && QGuiApplication::platformName() == u"xcb";
}

bool isComposited(X11Connection &connection)
{
    // Not followed: not every compositing manager announces itself.
    return QGuiApplication::platformName() == u"wayland"
        || (connection.isOpen() && x11SelectionOwner(connection, "_NET_WM_CM") != XCB_WINDOW_NONE);
}

bool mayBypassWindowManager(X11Connection &connection)
{
    if (!isOnX11(connection))
        return false;
    if (!connection.isXwayland())
        return true;
    // "_NET_SUPPORTING_WM_CHECK" in the Extended Window Manager Hints
    const QList<quint32> manager = connection.words(
        connection.screen().root, connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
    return !manager.isEmpty() && connection.text(manager.first(), "_NET_WM_NAME") == "wlroots wm";
}
