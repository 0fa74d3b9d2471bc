#pragma once

#include "Platform/Linux/X11/Presses.h"

/// The keyboard focus of a window that no window manager looks after: taken, watched, and given
/// back to who had it. Works for activations that no input event stands behind. Main thread only.
class X11Focus : public QObject {
    Q_OBJECT

public:
    /// Both outlive it.
    X11Focus(X11Connection &connection, X11Presses &presses, QObject *parent = nullptr);

    /// For a window that is on the screen.
    void take(xcb_window_t window);
    /// From now on nobody wants to know who gets it, and it is not defended.
    void stopWatching() { m_watching = false; }
    /// To the window that had it before, if ours still has it.
    void giveBack();

signals:
    /// Another window has got it.
    void lost();

private:
    void handleEvent(const xcb_generic_event_t *event);
    bool followsPointer(xcb_window_t focus);
    void setFocus(xcb_window_t window);
    xcb_window_t focused();

    X11Connection &m_connection;
    X11Presses &m_presses;
    xcb_window_t m_window = XCB_WINDOW_NONE; ///< none while it is not ours
    xcb_window_t m_previous = XCB_WINDOW_NONE;
    bool m_watching = false;
    QPoint m_pointer; ///< on the root, device pixels, when the focus was last taken
};
