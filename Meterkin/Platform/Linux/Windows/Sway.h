#pragma once

#include <QRect>

class QScreen;

/// The part of a screen that is free of sway's bars, in logical coordinates: neither its Xwayland
/// nor a layer surface is told where it is, its own socket tells it. Empty where the compositor is
/// another one. Waits for the answer, but not for long.
QRect swayFreeGeometry(const QScreen &screen);
