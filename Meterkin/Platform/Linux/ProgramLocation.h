#pragma once

#include <QString>

/// What was installed: the AppImage that the program runs from, else the folder that it lies in.
/// Absolute, without a slash at its end.
QString bundlePath();

/// What starts the program anew: the AppImage, else the program's own file. Absolute.
QString programToStart();
