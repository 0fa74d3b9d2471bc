#include "Views/Onboarding/OnboardingShimmer.h"

#include "Views/PixelGrid.h"

#include <QLinearGradient>
#include <QPainter>

#include <cmath>
#include <numbers>

namespace {

constexpr int ShimmerStops = 12;
constexpr int Brightness = 24; // of 255: the label above it stays legible
constexpr double HalfWidthPerHeight = 1.1;
constexpr double SlantPerHeight = 0.35;

} // namespace

void OnboardingShimmer::setPhase(double phase)
{
    if (m_phase == phase)
        return;
    m_phase = phase;
    update();
    emit phaseChanged();
}

void OnboardingShimmer::paint(QPainter *painter)
{
    const double halfWidth = HalfWidthPerHeight * height();
    const QPointF half(halfWidth, SlantPerHeight * halfWidth);
    const double reach = halfWidth + SlantPerHeight * height();
    const QPointF centre(m_phase * (width() + 2 * reach) - reach, height() / 2);
    QLinearGradient band(centre - half, centre + half);
    for (int i = 0; i <= ShimmerStops; ++i) {
        const double place = double(i) / ShimmerStops;
        const double rise = std::sin(std::numbers::pi * place);
        band.setColorAt(place, QColor(255, 255, 255, qRound(Brightness * rise * rise)));
    }
    const PixelGrid grid(*painter);
    const QRectF capsule = grid.pixels(boundingRect());
    QBrush light(band);
    light.setTransform(QTransform::fromScale(grid.scale(), grid.scale())
                       * QTransform::fromTranslate(capsule.x(), capsule.y()));
    painter->setPen(Qt::NoPen);
    painter->setBrush(light);
    // The whole capsule, because clipping to round ends is not available; clear beyond the band.
    painter->drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
}
