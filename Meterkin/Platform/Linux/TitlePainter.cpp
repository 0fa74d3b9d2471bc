#include "Platform/Linux/TitlePainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

QFont titleFont(int pixelSize, QFont::Weight weight)
{
    QFont font;
    font.setPixelSize(std::max(pixelSize, 1));
    font.setWeight(weight);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

QImage transparentImage(int width, int height)
{
    QImage image(std::max(width, 1), std::max(height, 1), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// Lays text out with all digits of one width: not every system font has such digits.
class DigitCells {
public:
    explicit DigitCells(const QFont &font)
        : m_metrics(font)
    {
        for (char16_t digit = u'0'; digit <= u'9'; ++digit)
            m_digit = std::max(m_digit, m_metrics.horizontalAdvance(QChar(digit)));
    }

    qreal cell(QChar character) const
    {
        return isDigit(character) ? m_digit : m_metrics.horizontalAdvance(character);
    }

    qreal width(QStringView text) const
    {
        qreal sum = 0;
        for (const QChar character : text)
            sum += cell(character);
        return sum;
    }

    qreal capHeight() const { return m_metrics.capHeight(); }

    void draw(QPainter &painter, QStringView text, qreal x, qreal baseline) const
    {
        for (const QChar character : text) {
            const qreal slack = cell(character) - m_metrics.horizontalAdvance(character);
            painter.drawText(QPointF(x + slack / 2, baseline), QString(character));
            x += cell(character);
        }
    }

private:
    static bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

    QFontMetricsF m_metrics;
    qreal m_digit = 0;
};

constexpr int SidePadding = 3; // logical pixels between the text and the item's edge
constexpr int SquareStretch = 80; // percent: narrow digits can be higher in a square
constexpr double LineGap = 0.12; // of the side, between the two lines of a square

QFont wideFont(int height, double scale)
{
    // A low panel takes a smaller text rather than a cut one.
    const int size = std::min(static_cast<int>(std::lround(AttributedTitle::FontSize * scale)),
                              static_cast<int>(height * 0.8));
    return titleFont(size, QFont::Medium);
}

QFont squareFont(int size)
{
    QFont font = titleFont(size, QFont::DemiBold);
    font.setStretch(SquareStretch);
    return font;
}

int paddedWidth(const DigitCells &cells, const AttributedTitle &title, double scale)
{
    const qreal widest = std::max(cells.width(title.text), cells.width(title.widestText));
    return static_cast<int>(std::ceil(widest + 2 * SidePadding * scale));
}

} // namespace

QImage TitlePainter::wide(const AttributedTitle &title, int height, double scale) const
{
    const QFont font = wideFont(height, scale);
    const DigitCells cells(font);
    const int width = paddedWidth(cells, title, scale);
    QImage image = transparentImage(width, height);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(title.color);
    cells.draw(painter, title.text, std::floor((width - cells.width(title.text)) / 2),
               std::round((height + cells.capHeight()) / 2));
    return image;
}

int TitlePainter::wideWidth(const AttributedTitle &title, int height, double scale) const
{
    return paddedWidth(DigitCells(wideFont(height, scale)), title, scale);
}

QImage TitlePainter::square(const AttributedTitle &title, int side) const
{
    const QList<QStringView> lines = QStringView(title.text).split(u' ', Qt::SkipEmptyParts);
    QImage image = transparentImage(side, side);
    if (lines.isEmpty())
        return image;

    // Two digits and a sign set the size, so that it stays the same from 0% to 99%.
    constexpr int Reference = 100;
    const DigitCells reference(squareFont(Reference));
    qreal widest = reference.width(u"00%");
    for (const QStringView line : lines)
        widest = std::max(widest, reference.width(line));
    const qreal count = static_cast<qreal>(lines.size());
    const qreal tallest = (side - (count - 1) * LineGap * side) / count;
    const int size = static_cast<int>(
        std::floor(Reference * std::min(side / widest, tallest / reference.capHeight())));

    const QFont font = squareFont(size);
    const DigitCells cells(font);
    const qreal block = count * cells.capHeight() + (count - 1) * LineGap * side;
    qreal baseline = (side - block) / 2 + cells.capHeight();
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(title.color);
    for (const QStringView line : lines) {
        cells.draw(painter, line, (side - cells.width(line)) / 2, std::round(baseline));
        baseline += cells.capHeight() + LineGap * side;
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
