#pragma once

#include "Platform/StatusItem.h"

#include <QImage>

/// Draws the title for the trays, as premultiplied ARGB with a transparent background.
/// Main thread only. Sizes are device pixels.
class TitlePainter {
public:
    /// The text in one line, centred in the width of the title's widest text.
    QImage wide(const AttributedTitle &title, int height, double scale) const;
    /// The width that wide() gives its image.
    int wideWidth(const AttributedTitle &title, int height, double scale) const;
    /// The text in a square, as large as it fits: one line, or two where it has a unit ("1850
    /// RPM").
    QImage square(const AttributedTitle &title, int side) const;
    /// The program's symbol in the title's colour, for hosts that show the text by themselves.
    QImage symbol(const QColor &color, int side) const;
};
