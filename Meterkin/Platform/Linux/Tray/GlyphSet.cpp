#include "Platform/Linux/Tray/GlyphSet.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int Overhang = 1; // some letters reach a little beyond their cell

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

} // namespace

GlyphSet::GlyphSet(const QFont &font)
    : m_font(font)
    , m_metrics(font)
    , m_capHeight(static_cast<int>(std::lround(m_metrics.capHeight())))
{
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        m_digitWidth = std::max(m_digitWidth, advance(QChar(digit)));
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        m_advances[QChar(digit)] = m_digitWidth;
}

int GlyphSet::width(QStringView text)
{
    int sum = 0;
    for (const QChar character : text)
        sum += advance(character);
    return sum;
}

void GlyphSet::draw(QImage &image, QStringView text, QPoint baseline, const QColor &color)
{
    const QRgb rgb = color.rgba();
    int left = baseline.x() - Overhang;
    const int top = baseline.y() - static_cast<int>(std::ceil(m_metrics.ascent()));
    for (const QChar character : text) {
        const QImage &coverage = mask(character);
        const QRect target = coverage.rect().translated(left, top) & image.rect();
        for (int y = target.top(); y <= target.bottom(); ++y) {
            const uchar *from = coverage.constScanLine(y - top);
            auto *to = reinterpret_cast<QRgb *>(image.scanLine(y));
            for (int x = target.left(); x <= target.right(); ++x) {
                const int alpha = from[x - left] * qAlpha(rgb) / 255;
                if (alpha > qAlpha(to[x]))
                    to[x] = qPremultiply(qRgba(qRed(rgb), qGreen(rgb), qBlue(rgb), alpha));
            }
        }
        left += advance(character);
    }
}

int GlyphSet::advance(QChar character)
{
    const auto known = m_advances.constFind(character);
    if (known != m_advances.constEnd())
        return *known;
    const int width = static_cast<int>(std::lround(m_metrics.horizontalAdvance(character)));
    return *m_advances.insert(character, width);
}

const QImage &GlyphSet::mask(QChar character)
{
    QImage &mask = m_masks[character];
    if (!mask.isNull())
        return mask;
    const int cell = advance(character);
    QImage image(cell + 2 * Overhang, static_cast<int>(std::ceil(m_metrics.height())) + 1,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(m_font);
    painter.setPen(Qt::white);
    const qreal slack = isDigit(character) ? cell - m_metrics.horizontalAdvance(character) : 0;
    painter.drawText(QPointF(Overhang + slack / 2, std::ceil(m_metrics.ascent())),
                     QString(character));
    painter.end();
    mask = image.convertToFormat(QImage::Format_Alpha8);
    return mask;
}
