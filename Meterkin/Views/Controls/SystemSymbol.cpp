#include "Views/Controls/SystemSymbol.h"

#include "Views/PixelGrid.h"
#include "Views/ViewEngine.h"

#include <QFile>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// A line of text is about 1.2 times as high as its font size.
constexpr double SquarePerPoint = 1.25;

// The side of a drawing, and the width of its lines.
constexpr double DrawingSide = 24.0;
constexpr double RegularLine = 1.9;
constexpr double SemiboldLine = 2.5;

QByteArray attribute(double line)
{
    return "stroke-width=\"" + QByteArray::number(line) + '"';
}

/// The side of the largest square in which a line through the middle of a drawing lies on whole
/// pixels.
int sharpSide(int side, double line)
{
    const int width = std::max(1, static_cast<int>(std::lround(line * side / DrawingSide)));
    return side - std::abs(side - width) % 2;
}

} // namespace

SystemSymbol::SystemSymbol(QQuickItem *parent)
    : DrawnItem(parent)
{
    adoptPointSize();
}

void SystemSymbol::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    load();
    emit nameChanged();
}

void SystemSymbol::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    redraw();
    emit colorChanged();
}

void SystemSymbol::setPointSize(double size)
{
    if (m_pointSize == size)
        return;
    m_pointSize = size;
    adoptPointSize();
    redraw();
    emit pointSizeChanged();
}

void SystemSymbol::setSemibold(bool isSemibold)
{
    if (m_isSemibold == isSemibold)
        return;
    m_isSemibold = isSemibold;
    load();
    emit semiboldChanged();
}

void SystemSymbol::paint(QPainter *painter)
{
    const double side = std::min(width(), height());
    const PixelGrid grid(*painter);
    const QRect square =
        grid.pixels(QRectF((width() - side) / 2.0, (height() - side) / 2.0, side, side));
    if (m_picture.width() != square.width())
        m_picture = picture(square.width(), grid.scale());
    painter->drawImage(square.topLeft(), m_picture);
}

void SystemSymbol::load()
{
    QFile file(QStringLiteral(":/Meterkin/Views/symbols/%1.svg").arg(m_name));
    QByteArray drawing;
    if (file.open(QIODevice::ReadOnly))
        drawing = file.readAll();
    m_drawing.load(m_isSemibold ? drawing.replace(attribute(RegularLine), attribute(SemiboldLine))
                                : drawing);
    redraw();
}

void SystemSymbol::redraw()
{
    m_picture = QImage();
    update();
}

/// In a square of that many pixels.
QImage SystemSymbol::picture(int side, double scale)
{
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const auto *engine = static_cast<ViewEngine *>(qmlEngine(this));
    const QImage image = engine != nullptr
        ? engine->appearance()->symbol(m_name, m_pointSize, m_isSemibold, scale)
        : QImage();
    if (!image.isNull()) {
        // Some are wider than they are high.
        const QSizeF size = image.size();
        const double factor = std::min({1.0, side / size.width(), side / size.height()});
        QRectF place(QPointF(), size * factor);
        place.moveCenter(QRectF(picture.rect()).center());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place, image);
    } else if (m_drawing.isValid()) {
        const int sharp = sharpSide(side, m_isSemibold ? SemiboldLine : RegularLine);
        m_drawing.render(&painter, QRect(0, 0, sharp, sharp));
    } else {
        return picture;
    }
    // The drawing is used as a mask: what it covers takes the colour.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), m_color);
    return picture;
}

void SystemSymbol::adoptPointSize()
{
    const double side = std::round(m_pointSize * SquarePerPoint);
    setImplicitSize(side, side);
}
