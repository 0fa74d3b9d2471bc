#pragma once

#include <QByteArray>

/// What letters are drawn with: a font file, and how fontconfig wants it drawn.
struct Typeface {
    QByteArray file; ///< empty when the desktop has no font
    int index = 0; ///< in the file, with the instance of a variable font
    int loadFlags = 0; ///< of FreeType: the hinting
    double stretch = 1; ///< horizontal factor, where the file is not as narrow as asked for
    bool isEmboldened = false; ///< where the file is lighter than asked for
};

/// The two that titles are drawn with.
struct TitleTypefaces {
    Typeface line; ///< for text in one line
    Typeface square; ///< bolder and narrower: in a square, narrow digits can be higher
};

/// The desktop's sans-serif font. Takes some milliseconds, and leaves nothing behind: Qt's font
/// database would stay, with half a megabyte.
TitleTypefaces findTitleTypefaces();
