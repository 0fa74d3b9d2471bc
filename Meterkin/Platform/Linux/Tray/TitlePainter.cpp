#include "Platform/Linux/Tray/TitlePainter.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int SidePadding = 3; // logical pixels between the text and the item's edge
constexpr double LineGap = 0.12; // of the side, between the two lines of a square
constexpr int ReferenceSize = 100; // of the font that squares are measured with
constexpr std::size_t MostGlyphSets = 12; // sizes in use at a time: a panel's and a few squares

QImage transparentImage(int width, int height)
{
    QImage image(std::max(width, 1), std::max(height, 1), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

int lineGap(int side)
{
    return static_cast<int>(std::lround(LineGap * side));
}

} // namespace

QImage TitlePainter::wide(const AttributedTitle &title, int height, double scale)
{
    const int width = wideWidth(title, height, scale);
    GlyphSet &set = lineGlyphs(height, scale);
    QImage image = transparentImage(width, height);
    set.draw(image, title.text,
             QPoint((width - set.width(title.text)) / 2, (height + set.capHeight()) / 2),
             title.color);
    return image;
}

int TitlePainter::wideWidth(const AttributedTitle &title, int height, double scale)
{
    GlyphSet &set = lineGlyphs(height, scale);
    const int widest = std::max(set.width(title.text), set.width(title.widestText));
    return widest + static_cast<int>(std::ceil(2 * SidePadding * scale));
}

QImage TitlePainter::square(const AttributedTitle &title, int side)
{
    const QList<QStringView> lines = QStringView(title.text).split(u' ', Qt::SkipEmptyParts);
    QImage image = transparentImage(side, side);
    if (lines.isEmpty())
        return image;
    GlyphSet &set = glyphs(Face::Square, squareSize(lines, side));
    const int step = set.capHeight() + lineGap(side);
    const int block = static_cast<int>(lines.size()) * step - lineGap(side);
    QPoint baseline(0, (side - block) / 2 + set.capHeight());
    for (const QStringView line : lines) {
        baseline.setX((side - set.width(line)) / 2);
        set.draw(image, line, baseline, title.color);
        baseline.ry() += step;
    }
    return image;
}

QImage TitlePainter::symbol(const QColor &color, int side) const
{
    // A gauge: an open arc of 240 degrees with its needle towards two o'clock.
    QImage image = transparentImage(side, side);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal stroke = std::max(side / 9.0, 1.5);
    const QRectF circle =
        QRectF(0, side * 0.06, side, side).adjusted(stroke, stroke, -stroke, -stroke);
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, -30 * 16, 240 * 16);
    const qreal angle = 50.0 * M_PI / 180.0;
    const qreal length = circle.width() * 0.34;
    painter.drawLine(circle.center(),
                     circle.center()
                         + QPointF(std::cos(angle) * length, -std::sin(angle) * length));
    return image;
}

GlyphSet &TitlePainter::glyphs(Face face, int pixelSize)
{
    const std::pair key(face, std::max(pixelSize, 1));
    if (const auto known = m_glyphs.find(key); known != m_glyphs.end())
        return known->second;
    if (m_glyphs.size() >= MostGlyphSets)
        m_glyphs.clear();
    if (!m_typefaces)
        m_typefaces = findTitleTypefaces();
    const Typeface &typeface = face == Face::Line ? m_typefaces->line : m_typefaces->square;
    return m_glyphs.try_emplace(key, typeface, key.second).first->second;
}

GlyphSet &TitlePainter::lineGlyphs(int height, double scale)
{
    // In a low panel the text gets smaller rather than cut.
    return glyphs(Face::Line,
                  std::min(static_cast<int>(std::lround(AttributedTitle::FontSize * scale)),
                           static_cast<int>(height * 0.8)));
}

int TitlePainter::squareSize(const QList<QStringView> &lines, int side)
{
    // Measured with two digits, so that the size stays the same from 0% to 99%.
    GlyphSet &reference = glyphs(Face::Square, ReferenceSize);
    int widest = std::max(reference.width(u"00%"), 1); // without a font all widths are zero
    for (const QStringView line : lines)
        widest = std::max(widest, reference.width(line));
    const int count = static_cast<int>(lines.size());
    const double tallest = static_cast<double>(side - (count - 1) * lineGap(side)) / count;
    const double fit =
        std::min(static_cast<double>(side) / widest, tallest / std::max(reference.capHeight(), 1));
    return static_cast<int>(ReferenceSize * fit);
}
