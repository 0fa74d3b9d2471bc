#pragma once

#include <QPoint>
#include <QRect>

class DisplayServer;
class QScreen;

/// The panel at a place of the desktop, both in logical coordinates; empty when no window that
/// could be a panel is there.
QRect panelAt(DisplayServer &displayServer, QPoint place);

/// The part of a screen that no panel covers, in logical coordinates. Qt does not know it where the
/// window manager reports one area for several screens.
QRect freeGeometry(DisplayServer &displayServer, const QScreen &screen);
