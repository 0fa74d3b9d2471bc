#pragma once

#include <QColor>

/// Blends in device RGB, component by component, without easing. The fraction is clamped to 0..1,
/// NaN counts as 0. A colour that cannot be converted (an invalid one) ends the blend at `to`.
QColor interpolateColor(const QColor &from, const QColor &to, double fraction);
