#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QImage>
#include <QPoint>

#include <xcb/render.h>

/// Draws images with an alpha channel into an X11 window of any visual. Main thread only.
class X11Picture {
public:
    explicit X11Picture(X11Connection &connection);

    /// Prepares for a window of that visual. Where the server cannot blend into it, nothing is
    /// drawn.
    void open(xcb_window_t window, xcb_visualid_t visual);
    /// To be called before the window is destroyed.
    void close();

    /// Clears the window to its background and blends the image over it; to be flushed.
    void draw(const QImage &image, QPoint position) const;

private:
    struct Formats {
        xcb_render_pictformat_t argb = 0;
        xcb_render_pictformat_t window = 0;
    };
    Formats formatsFor(xcb_visualid_t visual) const;

    X11Connection &m_connection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_render_picture_t m_picture = XCB_NONE;
    xcb_render_pictformat_t m_argb = 0;
};
