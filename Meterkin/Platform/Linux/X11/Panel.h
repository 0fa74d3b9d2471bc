#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QPoint>
#include <QRect>

class QScreen;

/// The panel at a place of the desktop, both in logical coordinates; empty when the window there
/// looks like no panel.
QRect x11PanelAt(X11Connection &connection, QPoint place);

/// The part of a screen that no panel covers, also where the window manager tells that only for all
/// screens together. Logical coordinates.
QRect x11FreeGeometry(X11Connection &connection, const QScreen &screen);
