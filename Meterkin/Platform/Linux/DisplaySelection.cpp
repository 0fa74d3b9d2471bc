#include "Platform/Linux/DisplaySelection.h"

#include <QByteArray>

#include <xcb/xcb.h>

namespace {

bool x11Answers()
{
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return false;
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

} // namespace

bool selectDisplay()
{
    qputenv("QT_QPA_PLATFORMTHEME", QByteArrayLiteral("generic"));
    if (x11Answers())
        return qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("xcb"));
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        && qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("wayland"));
}
