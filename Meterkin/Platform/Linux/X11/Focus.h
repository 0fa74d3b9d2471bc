#pragma once

#include "Platform/Linux/X11/Presses.h"

#include <QElapsedTimer>

/// The keyboard focus of a window that bypasses the window manager: taken, watched and given back
/// to the window that had it before. Main thread only.
class X11Focus : public QObject {
    Q_OBJECT

public:
    /// Both outlive it.
    X11Focus(X11Connection &connection, X11Presses &presses, QObject *parent = nullptr);

    /// The window is on the screen.
    void take(xcb_window_t window);
    /// From now on a loss is neither reported nor undone.
    void stopWatching() { m_isWatching = false; }
    /// To the window that had it before, unless another one has got it since.
    void giveBack();

signals:
    /// Another window has got the focus.
    void lost();

private:
    void handleEvent(const xcb_generic_event_t *event);
    bool isNoChoice(xcb_window_t focus);
    bool isUnderPointer(xcb_window_t focus);
    void setFocus(xcb_window_t window);
    xcb_window_t focused();

    X11Connection &m_connection;
    X11Presses &m_presses;
    xcb_window_t m_window = XCB_WINDOW_NONE; ///< from take() to giveBack()
    xcb_window_t m_previous = XCB_WINDOW_NONE;
    bool m_isWatching = false;
    QElapsedTimer m_sinceTaken; ///< by take()
    QPoint m_pointer; ///< on the root, device pixels, when the focus was last taken
};
