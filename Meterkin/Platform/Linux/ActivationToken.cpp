#include "Platform/Linux/ActivationToken.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <memory>

namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN"; // where Qt looks for it

constexpr qsizetype MostLength = 256; // bytes; real ones are much shorter

bool isOnX11()
{
    return QGuiApplication::platformName() == u"xcb";
}

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

/// As the Startup Notification Protocol of freedesktop.org has it.
void endStartup(xcb_connection_t *connection, const QByteArray &identifier)
{
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

} // namespace

void acceptActivationToken(const QString &token)
{
    const QByteArray bytes = token.toUtf8();
    if (bytes.isEmpty() || bytes.size() > MostLength || bytes.contains('\0'))
        return;
    if (isOnX11())
        endStartup(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection(),
                   bytes);
    else
        qputenv(tokenVariable, bytes);
}

void activateWindow(QWindow &window)
{
    window.requestActivate();
    qunsetenv(tokenVariable);
}

void spendActivationToken(QWindow &window)
{
    if (qEnvironmentVariableIsSet(tokenVariable) && !isOnX11())
        activateWindow(window);
}
