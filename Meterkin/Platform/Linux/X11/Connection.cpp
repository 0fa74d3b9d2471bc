#include "Platform/Linux/X11/Connection.h"

#include <QList>
#include <QSocketNotifier>

#include <algorithm>

X11Connection::X11Connection(QObject *parent)
    : QObject(parent)
{
    // Without the variable xcb would try the first display of this machine.
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        return;
    xcb_connection_t *connection = xcb_connect(nullptr, &m_screenNumber);
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int skipped = 0; skipped < m_screenNumber && screens.rem > 1; ++skipped)
        xcb_screen_next(&screens);
    if (xcb_connection_has_error(connection) != 0 || screens.rem == 0) {
        xcb_disconnect(connection);
        return;
    }
    m_connection = connection;
    m_screen = screens.data;
    m_notifier =
        new QSocketNotifier(xcb_get_file_descriptor(connection), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &X11Connection::dispatch);
}

X11Connection::~X11Connection()
{
    if (isOpen())
        xcb_disconnect(m_connection);
}

bool X11Connection::isXwayland() const
{
    return isOpen() && qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

xcb_atom_t X11Connection::atom(const QByteArray &name)
{
    if (const auto known = m_atoms.constFind(name); known != m_atoms.constEnd())
        return *known;
    const auto reply = awaitReply(
        xcb_intern_atom_reply,
        xcb_intern_atom(m_connection, 0, static_cast<quint16>(name.size()), name.constData()));
    const xcb_atom_t atom = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    m_atoms.insert(name, atom);
    return atom;
}

QList<quint32> X11Connection::words(xcb_window_t window, xcb_atom_t property, xcb_atom_t type)
{
    constexpr quint32 MostWords = 64;
    const auto reply =
        awaitReply(xcb_get_property_reply,
                   xcb_get_property(m_connection, 0, window, property, type, 0, MostWords));
    if (!reply || reply->format != 32)
        return {};
    const auto *begin = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
    return QList<quint32>(begin, begin + xcb_get_property_value_length(reply.get()) / 4);
}

QByteArray X11Connection::text(xcb_window_t window, const QByteArray &property)
{
    constexpr quint32 MostWords = 64;
    const auto reply = awaitReply(xcb_get_property_reply,
                                  xcb_get_property(m_connection, 0, window, atom(property),
                                                   atom("UTF8_STRING"), 0, MostWords));
    if (!reply || reply->format != 8)
        return {};
    return QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

bool X11Connection::isAccepted(xcb_void_cookie_t request)
{
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(m_connection, request));
    dispatchSoon();
    return !error;
}

void X11Connection::dispatchSoon()
{
    // Events that arrived before a reply are in xcb's queue: the socket is not readable for them.
    QMetaObject::invokeMethod(this, &X11Connection::dispatch, Qt::QueuedConnection);
}

void X11Connection::dispatch()
{
    if (!isOpen())
        return;
    while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
        emit eventReceived(event.get());
    if (xcb_connection_has_error(m_connection) != 0) {
        m_notifier->setEnabled(false);
        xcb_disconnect(m_connection);
        m_connection = nullptr;
        emit closed();
        return;
    }
    xcb_flush(m_connection);
}
