#include "Platform/Linux/Windows/PopoverFrame.h"

#include "Views/Controls/Plate.h"
#include "Views/PixelGrid.h"

#include <QMetaProperty>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace {

// Logical pixels.
constexpr int ShadowMargin = 24;
constexpr int ShadowDrop = 5; // light comes from above
constexpr int ShadowBlur = 18; // its reach beyond the border
constexpr double CornerRadius = 10;

constexpr double ShadowStrength = 0.30;
constexpr int BlurPasses = 3; // of a box filter: close to a Gaussian blur

/// One box-filter pass along the lines of a square of that side, transposed: the next pass runs
/// across.
void blurLines(const std::vector<float> &from, std::vector<float> &to, int side, int reach)
{
    const auto at = [side](int line, int place) {
        return static_cast<std::size_t>(line) * static_cast<std::size_t>(side)
            + static_cast<std::size_t>(place);
    };
    const float weight = 1.0F / static_cast<float>(2 * reach + 1);
    for (int line = 0; line < side; ++line) {
        float sum = 0;
        for (int place = -reach; place < side; ++place) {
            if (place + reach < side)
                sum += from[at(line, place + reach)];
            if (place - reach - 1 >= 0)
                sum -= from[at(line, place - reach - 1)];
            if (place >= 0)
                to[at(place, line)] = sum * weight;
        }
    }
}

/// The shadow of a rounded square, as small as its edges allow, in device pixels.
QImage shadowTile(int margin, double radius, int reach)
{
    const int corner = margin + reach + static_cast<int>(std::ceil(radius));
    const int side = 2 * corner + 1;
    QImage shape(side, side, QImage::Format_Grayscale8);
    shape.fill(Qt::black);
    {
        QPainter painter(&shape);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(QRect(margin, margin, side - 2 * margin, side - 2 * margin), radius,
                                radius);
    }
    std::vector<float> values(static_cast<std::size_t>(side * side));
    std::vector<float> scratch(values.size());
    for (int y = 0; y < side; ++y) {
        std::transform(shape.constScanLine(y), shape.constScanLine(y) + side,
                       values.begin() + y * side,
                       [](uchar value) { return static_cast<float>(value); });
    }
    for (int pass = 0; pass < BlurPasses; ++pass) {
        blurLines(values, scratch, side, std::max(1, reach / BlurPasses));
        blurLines(scratch, values, side, std::max(1, reach / BlurPasses));
    }
    QImage tile(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        auto *line = reinterpret_cast<QRgb *>(tile.scanLine(y));
        std::transform(
            values.begin() + y * side, values.begin() + (y + 1) * side, line, [](float value) {
                return qRgba(0, 0, 0, static_cast<int>(std::lround(value * ShadowStrength)));
            });
    }
    return tile;
}

QColor colorOf(const QQuickItem &content, const char *name, const QColor &otherwise)
{
    const auto color = content.property(name).value<QColor>();
    return color.isValid() ? color : otherwise;
}

} // namespace

PopoverFrame::PopoverFrame(FrameStyle style, QQuickItem *parent)
    : DrawnItem(parent)
    , m_style(style)
{
}

void PopoverFrame::follow(QQuickItem &content)
{
    m_content = &content;
    const QMetaObject *type = content.metaObject();
    const QMetaMethod read = metaObject()->method(metaObject()->indexOfSlot("readColors()"));
    for (const char *name : {"background", "border"}) {
        const QMetaProperty property = type->property(type->indexOfProperty(name));
        if (property.hasNotifySignal())
            connect(&content, property.notifySignal(), this, read);
    }
    readColors();
}

int PopoverFrame::margin() const
{
    return m_style == FrameStyle::Rounded ? ShadowMargin : 0;
}

void PopoverFrame::readColors()
{
    m_background = colorOf(*m_content, "background", m_background);
    m_border = colorOf(*m_content, "border", m_border);
    emit backgroundChanged();
    update();
}

void PopoverFrame::paint(QPainter *painter)
{
    const PixelGrid grid(*painter);
    const int side = margin();
    if (side > 0)
        paintShadow(*painter, grid);
    drawPlate(*painter, grid, boundingRect().adjusted(side, side, -side, -side),
              {.color = m_background,
               .radius = side > 0 ? CornerRadius : 0.0,
               .lineColor = m_border,
               .lineWidth = 1.0});
}

void PopoverFrame::paintShadow(QPainter &painter, const PixelGrid &grid)
{
    const double scale = grid.scale();
    if (m_shadow.isNull() || m_shadowScale != scale) {
        m_shadow =
            shadowTile(grid.pixels(ShadowMargin), CornerRadius * scale, grid.pixels(ShadowBlur));
        m_shadowScale = scale;
    }
    // The lowest lines fall out of the item, where the shadow has faded out.
    const QRect all = grid.pixels(boundingRect()).translated(0, grid.pixels(ShadowDrop));
    const int corner = m_shadow.width() / 2;
    const std::array<int, 3> from{0, corner, corner + 1};
    const std::array<int, 3> fromSize{corner, 1, corner};
    const std::array<int, 3> x{0, corner, all.width() - corner};
    const std::array<int, 3> y{0, corner, all.height() - corner};
    const std::array<int, 3> w{corner, all.width() - 2 * corner, corner};
    const std::array<int, 3> h{corner, all.height() - 2 * corner, corner};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            if (row == 1 && column == 1)
                continue; // behind the frame
            painter.drawImage(QRect(all.x() + x[column], all.y() + y[row], w[column], h[row]),
                              m_shadow,
                              QRect(from[column], from[row], fromSize[column], fromSize[row]));
        }
    }
}
