#pragma once

#include <QImage>
#include <QPoint>

typedef struct FT_LibraryRec_ *FT_Library;
typedef struct FT_FaceRec_ *FT_Face;
struct Typeface;

/// A letter's picture.
struct LetterMask {
    QImage coverage; ///< one byte a pixel; null where nothing is to be drawn
    QPoint place; ///< of its upper left corner, seen from the pen on the baseline
};

/// A typeface at one size, read from its file when the first letter is asked for. Device pixels.
class FontFile {
public:
    FontFile(const Typeface &typeface, int pixelSize);
    ~FontFile();
    Q_DISABLE_COPY_MOVE(FontFile)

    /// How far the letter moves the pen.
    double advance(QChar character);
    /// As if the pen were about `shift` further to the right.
    LetterMask mask(QChar character, double shift);
    /// The height of an "H".
    double capHeight();

private:
    bool open();
    /// False when the font cannot be read, or does not have it.
    bool load(QChar character);

    const Typeface &m_typeface;
    int m_pixelSize;
    FT_Library m_library = nullptr;
    FT_Face m_face = nullptr;
};
