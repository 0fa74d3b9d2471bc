#pragma once

#include <QString>

/// What was installed: the AppImage that the program runs from, the AppDir, else the program's
/// folder. Absolute, without a slash at its end.
QString bundlePath();

struct ProgramFile {
    QString path; ///< to open the running file, even when another one has its name now
    QString placeInBundle; ///< "/meterkin", "/usr/bin/meterkin"; empty for an AppImage
};

/// The file that the program was installed as.
ProgramFile programFile();

/// What starts the program: the AppImage, else the program's file. Absolute.
QString programToStart();
