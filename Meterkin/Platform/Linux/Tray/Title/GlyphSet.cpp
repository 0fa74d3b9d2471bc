#include "Platform/Linux/Tray/Title/GlyphSet.h"

#include <QColor>

#include <algorithm>
#include <cmath>

namespace {

const QString digits = QStringLiteral("0123456789");

} // namespace

GlyphSet::GlyphSet(const Typeface &typeface, int pixelSize)
    : m_typeface(typeface)
    , m_pixelSize(pixelSize)
{
    FontFile font(m_typeface, m_pixelSize);
    m_capHeight = static_cast<int>(std::lround(font.capHeight()));
    int widest = 0;
    for (const QChar digit : digits)
        widest = std::max(widest, advance(digit, font));
    for (const QChar digit : digits)
        m_advances[digit] = widest;
}

int GlyphSet::width(QStringView text)
{
    FontFile font(m_typeface, m_pixelSize);
    int sum = 0;
    for (const QChar character : text)
        sum += advance(character, font);
    return sum;
}

void GlyphSet::draw(QImage &image, QStringView text, QPoint baseline, const QColor &color)
{
    FontFile font(m_typeface, m_pixelSize);
    if (m_masks.isEmpty()) {
        // All at once: each will be wanted, and FreeType takes much to begin.
        for (const QChar digit : digits)
            mask(digit, font);
    }
    const QRgb rgb = color.rgba();
    uchar *const pixels = image.bits(); // once: it looks whether anybody shares them
    for (const QChar character : text) {
        const LetterMask &letter = mask(character, font);
        const QPoint corner = baseline + letter.place;
        const QRect target = letter.coverage.rect().translated(corner) & image.rect();
        for (int y = target.top(); y <= target.bottom(); ++y) {
            const uchar *from = letter.coverage.constScanLine(y - corner.y());
            auto *to = reinterpret_cast<QRgb *>(pixels + y * image.bytesPerLine());
            for (int x = target.left(); x <= target.right(); ++x) {
                if (from[x - corner.x()] == 0)
                    continue; // as most are
                const int alpha = from[x - corner.x()] * qAlpha(rgb) / 255;
                if (alpha > qAlpha(to[x]))
                    to[x] = qPremultiply(qRgba(qRed(rgb), qGreen(rgb), qBlue(rgb), alpha));
            }
        }
        baseline.rx() += advance(character, font);
    }
}

int GlyphSet::advance(QChar character, FontFile &font)
{
    const auto known = m_advances.constFind(character);
    if (known != m_advances.constEnd())
        return *known;
    return *m_advances.insert(character, static_cast<int>(std::lround(font.advance(character))));
}

const LetterMask &GlyphSet::mask(QChar character, FontFile &font)
{
    const auto known = m_masks.constFind(character);
    if (known != m_masks.constEnd())
        return *known;
    // A digit that is narrower than the others stands in the middle of its cell.
    const double slack =
        character.isDigit() ? advance(character, font) - font.advance(character) : 0;
    return *m_masks.insert(character, font.mask(character, slack / 2));
}
