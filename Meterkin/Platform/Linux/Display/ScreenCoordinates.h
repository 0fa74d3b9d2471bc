#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

class QScreen;

// X11 and its panels count in device pixels, Qt's windows and Wayland in logical ones.

/// The same place in logical coordinates; absent when it is on no screen. Coordinates beyond the
/// device pixels of all screens are taken as logical ones, which some panels send.
std::optional<QPoint> logicalPosition(QPoint native);

/// The same for a rectangle, by its upper left corner; empty when that is on no screen.
QRect logicalRect(const QRect &native);

/// A logical place on that screen in device pixels.
QPoint nativePosition(QPoint logical, const QScreen &screen);
