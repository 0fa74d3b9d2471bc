#pragma once

/// Chooses the window system before the kit starts: X11, also through Xwayland, where positions and
/// key grabs exist; else Wayland. Also keeps a desktop's theme plugins, which pull in whole tool
/// kits, out of the process. False when there is no display at all.
bool selectDisplay();
