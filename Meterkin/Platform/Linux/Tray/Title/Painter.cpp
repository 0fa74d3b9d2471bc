#include "Platform/Linux/Tray/Title/Painter.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int SidePadding = 3; // logical pixels between the text and the item's edge
constexpr double LineGap = 0.12; // of the side, between the two lines of a square
constexpr double SymbolGrid = 24; // units of the symbol's coordinates on a side
constexpr int ReferenceSize = 100; // of the font that squares are measured with
constexpr double LeastCapHeight = 5.6; // pixels, which hinting makes six: digits are as high
constexpr std::size_t MostGlyphSets = 18; // sizes in use at a time: a panel's and a few squares

QImage transparentImage(int width, int height)
{
    QImage image(std::max(width, 1), std::max(height, 1), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// "12.5k", or "13k" without decimals.
QString thousands(int number, int decimals)
{
    return QString::number(number / 1000.0, 'f', decimals) + u'k';
}

/// The lines of a square, each form narrower or lower than the one before.
QList<QStringList> squareForms(const QString &text)
{
    constexpr int Ten = 10'000;
    const auto end = std::ranges::find_if_not(text, [](QChar c) { return c.isDigit(); });
    const QString leading = text.first(std::distance(text.begin(), end));
    const int number = leading.toInt();
    const QString unit = text.sliced(leading.size());
    if (leading.isEmpty())
        return {unit.split(u' ', Qt::SkipEmptyParts)};
    const QString amount = number < Ten ? leading : thousands(number, 1);
    QList<QStringList> forms{(amount + unit).split(u' ', Qt::SkipEmptyParts), {amount}};
    if (number >= 1000)
        forms.append({thousands(number, number < Ten ? 1 : 0)});
    return forms;
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
    QImage image = transparentImage(side, side);
    QStringList lines;
    int size = 0;
    for (const QStringList &form : squareForms(title.text)) {
        lines = form;
        size = squareSize(lines, side);
        if (size * glyphs(Face::Square, ReferenceSize).capHeight()
            >= LeastCapHeight * ReferenceSize)
            break;
    }
    if (lines.isEmpty())
        return image;
    GlyphSet &set = glyphs(Face::Square, size);
    const int step = set.capHeight() + lineGap(side);
    const int block = static_cast<int>(lines.size()) * step - lineGap(side);
    QPoint baseline(0, (side - block) / 2 + set.capHeight());
    for (const QString &line : lines) {
        baseline.setX((side - set.width(line)) / 2);
        set.draw(image, line, baseline, title.color);
        baseline.ry() += step;
    }
    return image;
}

QImage TitlePainter::symbol(const QColor &color, int side) const
{
    // The gauge of the program's icon, with bolder lines: an open arc of 240 degrees and a needle
    // towards ten o'clock.
    QImage image = transparentImage(side, side);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / SymbolGrid, side / SymbolGrid);
    const QPointF hub(12, 13.4);
    constexpr double radius = 9.6;
    painter.setPen(QPen(color, 2.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(hub.x() - radius, hub.y() - radius, 2 * radius, 2 * radius), -30 * 16,
                    240 * 16);
    painter.drawLine(hub, hub + QPointF(-3.6, -4.3));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(hub, 2.4, 2.4);
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

int TitlePainter::squareSize(const QStringList &lines, int side)
{
    // Measured with two digits, so that the size stays the same from 0% to 99%.
    GlyphSet &reference = glyphs(Face::Square, ReferenceSize);
    int widest = std::max(reference.width(u"00%"), 1); // without a font all widths are zero
    for (const QString &line : lines)
        widest = std::max(widest, reference.width(line));
    const int count = static_cast<int>(lines.size());
    const double tallest = static_cast<double>(side - (count - 1) * lineGap(side)) / count;
    const double fit =
        std::min(static_cast<double>(side) / widest, tallest / std::max(reference.capHeight(), 1));
    const int size = static_cast<int>(ReferenceSize * fit);
    // Widths are whole pixels, which can add up to more than the square has.
    GlyphSet &set = glyphs(Face::Square, size);
    const bool isCut = set.width(u"00%") > side
        || std::ranges::any_of(lines, [&](const QString &line) { return set.width(line) > side; });
    return isCut ? size - 1 : size;
}
