#pragma once

#include "Model/ThresholdTier.h"

#include <QColor>

/// The colour a tier has in the menu bar or panel. Each keeps a contrast of 3:1 on the light and
/// on the dark panels of the common desktops, since a panel does not tell its background.
QColor tierColor(ThresholdTier tier);

/// Blends in device RGB, component by component, without easing. The fraction is clamped to 0..1,
/// NaN counts as 0. A colour that cannot be converted (an invalid one) ends the blend at `to`.
QColor interpolateColor(const QColor &from, const QColor &to, double fraction);
