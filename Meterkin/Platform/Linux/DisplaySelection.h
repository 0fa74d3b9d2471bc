#pragma once

/// Chooses the window system before the kit starts: X11, also through Xwayland, where positions and
/// key grabs exist; else Wayland. Qt's name for it, or null when there is no display at all.
const char *selectDisplay();
