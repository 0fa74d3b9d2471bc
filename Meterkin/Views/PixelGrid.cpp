#include "Views/PixelGrid.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double LeastRounded = 2.0; // pixels: shorter ones are cut off
constexpr double Tolerance = 1e-3; // of what a sum of fractions is off

int rounded(double length)
{
    return static_cast<int>(std::floor(length + 0.5 + Tolerance));
}

} // namespace

PixelGrid::PixelGrid(QPainter &painter)
    : m_painter(painter)
{
    const QTransform device = painter.deviceTransform();
    m_scale = device.m11();
    m_origin = device.map(QPointF());
    painter.save();
    // The device's own scale, which the painter adds, is taken out again.
    painter.setTransform(device.inverted() * painter.transform());
}

PixelGrid::~PixelGrid()
{
    m_painter.restore();
}

int PixelGrid::pixels(double length) const
{
    const double exact = length * m_scale;
    return std::max(1, exact < LeastRounded ? static_cast<int>(exact + Tolerance) : rounded(exact));
}

QRect PixelGrid::pixels(const QRectF &rect) const
{
    const QPointF corner = m_origin + rect.topLeft() * m_scale;
    return QRect(rounded(corner.x()), rounded(corner.y()), pixels(rect.width()),
                 pixels(rect.height()));
}
