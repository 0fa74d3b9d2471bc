#include "Views/Onboarding/OnboardingGlow.h"

#include <QPainter>
#include <QRadialGradient>

#include <cmath>

namespace {

constexpr double CentreOpacity = 0.36;
constexpr int GlowStops = 16;
constexpr double Steepness = 4.5;

/// A bell curve, lowered to 0 at the edge: a step there would be visible as a disc.
double brightness(double distance)
{
    const double atEdge = std::exp(-Steepness);
    return (std::exp(-Steepness * distance * distance) - atEdge) / (1.0 - atEdge);
}

} // namespace

void OnboardingGlow::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    update();
    emit colorChanged();
}

void OnboardingGlow::paint(QPainter *painter)
{
    const QPointF centre(width() / 2, height() / 2);
    QRadialGradient light(centre, width() / 2);
    for (int i = 0; i <= GlowStops; ++i) {
        const double distance = double(i) / GlowStops;
        QColor color = m_color;
        color.setAlphaF(float(CentreOpacity * brightness(distance)));
        light.setColorAt(distance, color);
    }
    painter->fillRect(QRectF(0, 0, width(), height()), light);
}
