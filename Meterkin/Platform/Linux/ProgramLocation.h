#pragma once

#include <QString>

/// What was installed: the AppImage that the program runs from, else the folder that it lies in.
/// Absolute, without a slash at its end.
QString bundlePath();

struct ProgramFile {
    QString path; ///< for opening it; the running file also when another one has taken its name
    QString placeInBundle; ///< "/meterkin"; empty when the bundle is the file
};

/// The file that the program was installed as.
ProgramFile programFile();

/// What starts the program anew: the AppImage, else the program's own file. Absolute.
QString programToStart();
