#pragma once

/// Chooses the window system before Qt starts: X11, also through Xwayland, where positions and key
/// grabs exist; else Wayland. Drops from the environment what names a display that does not answer:
/// other programs set it, and it misleads. What Qt is to try in turn, by Qt's names and with
/// semicolons between them; null when no display answers. Waits for a display that hangs for 10 s.
const char *selectDisplay();
