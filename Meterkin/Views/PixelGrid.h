#pragma once

#include <QRect>

class QPainter;

/// While it lives, one unit of the painter is one pixel of its device, wherever and at whichever
/// scale the painter was drawing. For what must not lie between two pixels.
class PixelGrid {
public:
    explicit PixelGrid(QPainter &painter);
    ~PixelGrid();
    PixelGrid(const PixelGrid &) = delete;
    PixelGrid &operator=(const PixelGrid &) = delete;

    /// Pixels a logical pixel.
    double scale() const { return m_scale; }
    /// A length as whole pixels, at least one: thin lines get thinner rather than thicker.
    int pixels(double length) const;
    /// The pixels that a rectangle of the painter's former units stands for.
    QRect pixels(const QRectF &rect) const;

private:
    QPainter &m_painter;
    double m_scale;
    QPointF m_origin;
};
