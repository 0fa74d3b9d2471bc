#include "Platform/Linux/Windows/DisplayServer.h"

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
