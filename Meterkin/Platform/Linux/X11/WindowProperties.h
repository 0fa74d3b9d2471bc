#pragma once

#include <QMargins>
#include <QRect>

#include <optional>

class QWindow;
class X11Connection;

// The functions of DisplayServer that speak of one of Qt's windows. Through Qt's own connection,
// and so in the order of its requests, go those that count from the moment that the window is
// mapped.

void setX11InputRegion(QWindow &window, const QRect &region);
void setX11FrameExtents(X11Connection &connection, QWindow &window, const QMargins &margins);
void skipX11TaskBar(X11Connection &connection, const QWindow &window);
void setX11DarkTitleBar(X11Connection &connection, const QWindow &window, bool isDark);
void demandX11Focus(X11Connection &connection, const QWindow &window);
std::optional<bool> isX11WindowOnPresentWorkspace(X11Connection &connection, const QWindow &window);
