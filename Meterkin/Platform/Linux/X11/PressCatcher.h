#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QRect>

/// A transparent window over the whole screen that takes the presses outside of a popup. Under
/// Xwayland nothing else tells of them: grabs and the X Input Extension end at the borders of X
/// windows. Needs a compositor. Main thread only.
class X11PressCatcher {
public:
    /// The connection outlives it and may be closed.
    explicit X11PressCatcher(X11Connection &connection);
    ~X11PressCatcher();

    /// XCB_WINDOW_NONE while it is not open. Its button events are reported by the connection.
    xcb_window_t window() const { return m_window; }
    /// `hole` stays open for presses: device pixels on the root. To be called again when it moves.
    void open(const QRect &hole);
    void close();

private:
    void create();

    X11Connection &m_connection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_colormap_t m_colormap = XCB_NONE;
};
