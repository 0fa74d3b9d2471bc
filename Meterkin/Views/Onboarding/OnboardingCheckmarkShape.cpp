#include "Views/Onboarding/OnboardingCheckmarkShape.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr double LineWidthPerSize = 0.052;
constexpr float DiscOpacity = 0.12F;

// The mark's corners in a square of side 1: a little left of the exact centre, which looks
// centred.
constexpr QPointF Start(0.305, 0.515);
constexpr QPointF Bottom(0.442, 0.650);
constexpr QPointF End(0.690, 0.372);

/// The mark in a square of side `size`, as far as the fraction of its length goes.
QPainterPath checkmark(double size, double fraction)
{
    const QLineF down(Start * size, Bottom * size);
    const QLineF up(Bottom * size, End * size);
    const double drawn = fraction * (down.length() + up.length());
    QPainterPath path(down.p1());
    path.lineTo(down.pointAt(std::min(1.0, drawn / down.length())));
    if (drawn > down.length())
        path.lineTo(up.pointAt((drawn - down.length()) / up.length()));
    return path;
}

} // namespace

void OnboardingCheckmarkShape::setTrim(double &trim, double fraction)
{
    if (trim == fraction)
        return;
    trim = fraction;
    update();
    emit trimChanged();
}

void OnboardingCheckmarkShape::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    emit colorChanged();
}

void OnboardingCheckmarkShape::paint(QPainter *painter)
{
    const double line = LineWidthPerSize * width();
    const QRectF circle = QRectF(0, 0, width(), width()).adjusted(line, line, -line, -line);
    QColor disc = m_color;
    disc.setAlphaF(DiscOpacity * float(m_circleTrim));
    painter->setPen(Qt::NoPen);
    painter->setBrush(disc);
    painter->drawEllipse(circle);

    painter->setPen(QPen(m_color, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    if (m_circleTrim > 0.0) {
        QPainterPath arc;
        arc.arcMoveTo(circle, 90.0);
        arc.arcTo(circle, 90.0, -360.0 * m_circleTrim);
        painter->drawPath(arc);
    }
    if (m_checkmarkTrim > 0.0)
        painter->drawPath(checkmark(width(), m_checkmarkTrim));
}
