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

const char *selectDisplay()
{
    if (x11Answers())
        return "xcb";
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ? "wayland" : nullptr;
}
