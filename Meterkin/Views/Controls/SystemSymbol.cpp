#include "Views/Controls/SystemSymbol.h"

#include "Views/ViewEngine.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// A line of text is about 1.2 times as high as its font size.
constexpr double SquarePerPoint = 1.25;

} // namespace

SystemSymbol::SystemSymbol(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    adoptPointSize();
}

void SystemSymbol::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    m_drawing.load(QStringLiteral(":/Meterkin/Views/symbols/%1.svg").arg(name));
    update();
    emit nameChanged();
}

void SystemSymbol::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    emit colorChanged();
}

void SystemSymbol::setPointSize(double size)
{
    if (m_pointSize == size)
        return;
    m_pointSize = size;
    adoptPointSize();
    emit pointSizeChanged();
}

void SystemSymbol::paint(QPainter *painter)
{
    const double side = std::min(width(), height());
    const QRectF square((width() - side) / 2.0, (height() - side) / 2.0, side, side);
    if (const QImage image = systemsDrawing(*painter); !image.isNull()) {
        // Some are wider than they are high.
        const QSizeF size = image.deviceIndependentSize();
        const double factor = std::min({1.0, side / size.width(), side / size.height()});
        QRectF place(QPointF(), size * factor);
        place.moveCenter(square.center());
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(place, image);
    } else if (m_drawing.isValid()) {
        m_drawing.render(painter, square);
    } else {
        return;
    }
    // The drawing is used as a mask: what it covers takes the colour. Nothing else is painted on
    // this picture.
    painter->save();
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(boundingRect(), m_color);
    painter->restore();
}

QImage SystemSymbol::systemsDrawing(const QPainter &painter) const
{
    const auto *engine = static_cast<ViewEngine *>(qmlEngine(this));
    if (engine == nullptr)
        return {};
    // Qt scales the painter, not the device, so the scale must come from the painter.
    return engine->appearance()->symbol(m_name, m_pointSize, painter.deviceTransform().m11());
}

void SystemSymbol::adoptPointSize()
{
    // Whole pixels, or the picture of the painted item would be cut or stretched.
    const double side = std::round(m_pointSize * SquarePerPoint);
    setImplicitSize(side, side);
}
