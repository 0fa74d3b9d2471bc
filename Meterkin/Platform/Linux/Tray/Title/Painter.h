#pragma once

#include "Platform/Linux/Tray/Title/GlyphSet.h"
#include "Platform/StatusItem.h"

#include <QImage>

#include <map>
#include <optional>

/// Draws the title for the trays, as premultiplied ARGB with a transparent background.
/// Main thread only. Sizes are device pixels.
class TitlePainter {
public:
    /// The text in one line, centred in the width of the title's widest text.
    QImage wide(const AttributedTitle &title, int height, double scale);
    /// The width that wide() gives its image.
    int wideWidth(const AttributedTitle &title, int height, double scale);
    /// The text in a square, as large as it fits: one line, or two where it has a unit ("1850
    /// RPM"). Thousands are "12.5k" from 10,000 on. Where letters would be lower than six pixels,
    /// the unit goes first, then digits do ("1.9k").
    QImage square(const AttributedTitle &title, int side);
    /// The program's symbol in the title's colour, for hosts that show the text by themselves.
    QImage symbol(const QColor &color, int side) const;

private:
    enum class Face { Line, Square };

    GlyphSet &glyphs(Face face, int pixelSize);
    GlyphSet &lineGlyphs(int height, double scale);
    int squareSize(const QStringList &lines, int side);

    std::optional<TitleTypefaces> m_typefaces; ///< once a letter was wanted
    std::map<std::pair<Face, int>, GlyphSet> m_glyphs;
};
