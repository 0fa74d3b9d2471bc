#pragma once

#include <QRect>

class QScreen;

/// The part of a screen that is free of sway's bars, in logical coordinates: its Xwayland does not
/// tell it, its own socket does. Empty where the compositor is another one. Waits for the answer,
/// but not for long.
QRect swayFreeGeometry(const QScreen &screen);
