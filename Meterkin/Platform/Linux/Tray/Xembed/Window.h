#pragma once

#include "Platform/Linux/Tray/Xembed/Manager.h"
#include "Platform/Linux/X11/Picture.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <optional>

/// The item's own window, which an X11 panel takes into its own. Sizes are device pixels. Main
/// thread only.
class XembedWindow {
public:
    /// The connection outlives it and may be closed; only close() may be called then.
    explicit XembedWindow(X11Connection &connection);

    bool isOpen() const { return m_window != XCB_WINDOW_NONE; }
    /// XCB_WINDOW_NONE while it is not open.
    xcb_window_t window() const { return m_window; }
    /// Where it is on the screen; empty when the server does not know.
    QRect place(QSize size) const;

    /// Makes the window of the kind that the panel wants.
    void open(const XembedManager &manager, QSize size);
    /// Asks the panel to take it.
    void requestDock(const XembedManager &manager);
    void close();

    /// Asks the panel for that size; false when that was the last request already.
    bool requestSize(QSize size);
    void setName(const QString &name);
    /// Clears it and draws over the panel's background.
    void draw(const QImage &image, QPoint position);
    /// The panel's colour around what was drawn: one round trip for each window that it is in.
    /// Absent while it is not in sight, and where the desktop shows through.
    std::optional<QColor> background(QSize size) const;
    /// Lets the panel's own background show through where the window has no alpha channel.
    void takeParentBackground();

private:
    X11Connection &m_connection;
    X11Picture m_picture;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_colormap_t m_colormap = XCB_NONE;
    quint8 m_depth = 0;
    QSize m_requestedSize;
};
