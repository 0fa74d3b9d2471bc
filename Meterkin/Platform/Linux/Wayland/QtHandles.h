#pragma once

class QScreen;
class QWindow;
struct wl_display;
struct wl_output;
struct wl_surface;

// The Wayland objects behind Qt's own. Those that we make of them belong to the display's default
// queue, whose events Qt dispatches on the main thread.

wl_display *waylandDisplay();
/// Null while the screen is a stand-in for none.
wl_output *waylandOutput(QScreen &screen);
/// Null before QWindow::create().
wl_surface *waylandSurface(QWindow &window);
