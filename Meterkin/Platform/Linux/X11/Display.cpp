#include "Platform/Linux/Display/X11.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

xcb_atom_t atomOf(xcb_connection_t *connection, const QByteArray &name)
{
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(
            connection,
            xcb_intern_atom(connection, 0, static_cast<quint16>(name.size()), name.constData()),
            nullptr),
        &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

bool x11Answers()
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

std::optional<QByteArray> x11DisplayName()
{
    char *host = nullptr;
    int number = 0;
    if (!qEnvironmentVariableIsSet("DISPLAY")
        || xcb_parse_display(nullptr, &host, &number, nullptr) == 0)
        return std::nullopt;
    QByteArray name = (qstrcmp(host, "unix") == 0 ? "" : host) + (':' + QByteArray::number(number));
    std::free(host);
    return name;
}

/// As the Startup Notification Protocol of freedesktop.org has it.
void endX11Startup(const QByteArray &identifier)
{
    xcb_connection_t *connection =
        qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    QByteArray text = identifier;
    text.replace('\\', "\\\\").replace('"', "\\\"");
    text = "remove: ID=\"" + text + "\"";
    text.append('\0');

    // The messages are told apart by a window of ours.
    const xcb_window_t sender = xcb_generate_id(connection);
    xcb_create_window(connection, 0, sender, root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = sender;
    message.type = atomOf(connection, "_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t next = atomOf(connection, "_NET_STARTUP_INFO");
    constexpr qsizetype bytes = sizeof message.data;
    for (qsizetype sent = 0; sent < text.size(); sent += bytes) {
        message.data = {};
        const QByteArray part = text.mid(sent, bytes);
        std::copy(part.begin(), part.end(), message.data.data8);
        xcb_send_event(connection, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&message));
        message.type = next;
    }
    xcb_destroy_window(connection, sender);
    xcb_flush(connection);
}
