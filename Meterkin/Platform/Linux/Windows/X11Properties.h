#pragma once

#include <QMargins>
#include <QRect>

class QWindow;
class X11Connection;

// What window managers and the X server are told of one of Qt's windows beyond what Qt tells them.
// In the order of Qt's own requests: what is told before a window is shown is known when it is
// mapped. In logical pixels. Only on X11.

/// Presses outside of that part of the window go to the windows below.
void setX11InputRegion(QWindow &window, const QRect &region);

/// The width of the transparent margin around the window's frame. Window managers that keep windows
/// off their panels would keep the margin off, too.
void setX11FrameExtents(X11Connection &connection, QWindow &window, const QMargins &margins);

/// Before each show: in no task bar, pager or window switcher.
void skipX11TaskBar(X11Connection &connection, const QWindow &window);

/// Whether the title bar is to be dark, where the window manager can choose.
void setX11DarkTitleBar(X11Connection &connection, const QWindow &window, bool isDark);
