#pragma once

#include <QPoint>
#include <QRect>

#include <optional>

class QScreen;

// X11 and the panels speak of device pixels, Qt's windows live in logical ones.

/// The same place in logical coordinates; absent when no screen holds it. Coordinates beyond the
/// device pixels of every screen are taken as logical ones, which some panels send.
std::optional<QPoint> logicalPosition(QPoint native);

/// The same for a rectangle, by its upper left corner; empty when no screen holds that.
QRect logicalRect(const QRect &native);

/// A logical place on that screen in device pixels.
QPoint nativePosition(QPoint logical, const QScreen &screen);
