#pragma once

#include "Platform/Linux/Tray/Title/FontFile.h"
#include "Platform/Linux/Tray/Title/Typeface.h"

#include <QHash>
#include <QImage>

/// A typeface at one size, whose characters are measured and drawn once, since a title changes
/// often and its letters do not. All digits get the same width, whatever the font says. Device
/// pixels; main thread only.
class GlyphSet {
public:
    GlyphSet(const Typeface &typeface, int pixelSize);

    int width(QStringView text);
    int capHeight() const { return m_capHeight; }
    /// Draws into an image of premultiplied ARGB, clipped to its edges.
    void draw(QImage &image, QStringView text, QPoint baseline, const QColor &color);

private:
    int advance(QChar character, FontFile &font);
    const LetterMask &mask(QChar character, FontFile &font);

    Typeface m_typeface;
    int m_pixelSize;
    int m_capHeight = 0;
    QHash<QChar, int> m_advances;
    QHash<QChar, LetterMask> m_masks;
};
