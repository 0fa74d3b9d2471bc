#pragma once

#include "Platform/Linux/X11/Connection.h"

#include <QPoint>
#include <QRect>

class QScreen;

/// The panel at a place of the desktop, both in logical coordinates; empty when no window that
/// could be a panel is there.
QRect x11PanelAt(X11Connection &connection, QPoint place);

/// The part of a screen that no panel covers, in logical coordinates. Qt does not know it where the
/// window manager reports one area for several screens.
QRect x11FreeGeometry(X11Connection &connection, const QScreen &screen);
