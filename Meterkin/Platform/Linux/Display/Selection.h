#pragma once

/// Chooses the window system before Qt starts: X11, also through Xwayland, because windows can be
/// positioned and keys grabbed there; else Wayland. Returns the platforms for Qt's "-platform"
/// option, null when no display answers. Waits 10 s for a display that hangs. Removes the variable
/// of a display that does not answer from the environment, so that other code does not rely on it.
const char *selectDisplay();
