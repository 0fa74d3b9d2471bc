#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

/// For replies, errors and events, which xcb allocates with malloc.
struct FreeDeleter {
    void operator()(void *pointer) const { std::free(pointer); }
};
template <typename Reply> using XcbReply = std::unique_ptr<Reply, FreeDeleter>;

/// An event as the type of its response_type.
template <typename Event> const Event &xcbEvent(const xcb_generic_event_t *event)
{
    return *reinterpret_cast<const Event *>(event);
}

class QSocketNotifier;

/// The program's own connection to the session's X server, besides Qt's: it is there also when Qt
/// runs on Wayland. Main thread only.
class X11Connection : public QObject {
    Q_OBJECT

public:
    explicit X11Connection(QObject *parent = nullptr);
    ~X11Connection() override;

    /// False when there is no X server; everything else may be called only when it is true.
    bool isOpen() const { return m_connection != nullptr; }
    /// Whether the server is Xwayland, which knows nothing of input outside of X windows.
    bool isXwayland() const;

    xcb_connection_t *xcb() const { return m_connection; }
    const xcb_screen_t &screen() const { return *m_screen; }
    int screenNumber() const { return m_screenNumber; }

    /// Waits for a reply, such as awaitReply(xcb_get_geometry_reply, xcb_get_geometry(...)). Null
    /// when the server refuses the request.
    template <typename Reply, typename Cookie>
    XcbReply<Reply> awaitReply(Reply *(*take)(xcb_connection_t *, Cookie, xcb_generic_error_t **),
                               Cookie request)
    {
        XcbReply<Reply> reply(take(m_connection, request, nullptr));
        dispatchSoon();
        return reply;
    }
    /// Waits for the server to accept or refuse a checked request.
    bool isAccepted(xcb_void_cookie_t request);

    /// XCB_ATOM_NONE when the server refuses.
    xcb_atom_t atom(const QByteArray &name);
    /// The first 64 words of a property; empty when it is missing or not of 32-bit words.
    QList<quint32> words(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);
    /// The first bytes of a property in UTF-8; empty when it is missing or of another type.
    QByteArray text(xcb_window_t window, const QByteArray &property);

signals:
    void eventReceived(const xcb_generic_event_t *event);
    /// The server has closed the connection; isOpen() is false from now on.
    void closed();

private:
    void dispatchSoon();
    void dispatch();

    xcb_connection_t *m_connection = nullptr;
    const xcb_screen_t *m_screen = nullptr;
    int m_screenNumber = 0;
    QSocketNotifier *m_notifier = nullptr;
    QHash<QByteArray, xcb_atom_t> m_atoms;
};
