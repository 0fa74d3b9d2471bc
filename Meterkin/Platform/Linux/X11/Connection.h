#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

/// Frees what xcb hands out with malloc.
struct FreeDeleter {
    void operator()(void *pointer) const { std::free(pointer); }
};
template <typename Reply> using XcbReply = std::unique_ptr<Reply, FreeDeleter>;

/// An event as what its type says it is.
template <typename Event> const Event &xcbEvent(const xcb_generic_event_t *event)
{
    return *reinterpret_cast<const Event *>(event);
}

class QSocketNotifier;

/// A connection of our own to the X server of the session, apart from Qt's: it stays usable
/// whichever window system Qt itself runs on. Main thread only.
class X11Connection : public QObject {
    Q_OBJECT

public:
    explicit X11Connection(QObject *parent = nullptr);
    ~X11Connection() override;

    /// False when there is no X server; everything else may be called only when it is true.
    bool isOpen() const { return m_connection != nullptr; }

    xcb_connection_t *xcb() const { return m_connection; }
    const xcb_screen_t &screen() const { return *m_screen; }
    int screenNumber() const { return m_screenNumber; }

    /// The atom of that name; XCB_ATOM_NONE when the server refuses.
    xcb_atom_t atom(const QByteArray &name);
    /// A property's value as 32-bit words; empty when it is missing or of another format.
    QList<quint32> words(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);

    /// Handles what replies left in the queue; to be called after waiting for a reply.
    void dispatchSoon();

signals:
    void eventReceived(const xcb_generic_event_t *event);
    /// The server is gone; isOpen() is false from now on.
    void closed();

private:
    void dispatch();

    xcb_connection_t *m_connection = nullptr;
    const xcb_screen_t *m_screen = nullptr;
    int m_screenNumber = 0;
    QSocketNotifier *m_notifier = nullptr;
    QHash<QByteArray, xcb_atom_t> m_atoms;
};
