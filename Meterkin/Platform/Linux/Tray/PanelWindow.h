#pragma once

#include "Platform/Linux/Plugins/LayerShell.h"

#include <QColor>
#include <QFont>
#include <QPoint>
#include <QRect>

class QPainter;

/// What the small windows that we draw beside a panel have in common: strip, menu and tool tip.
/// Dark on every desktop, as most panels are; texts keep a contrast of at least 4.5:1.
namespace PanelWindow {

inline const QColor background(0x26, 0x26, 0x2a);
inline const QColor border(0x4a, 0x4a, 0x50);
inline const QColor text(0xf0, 0xf0, 0xf2);
inline const QColor selection(0x3d, 0x5a, 0x80);

QFont font();
/// A rectangle of that size next to `anchor`, on the side where the screen has room. Logical
/// pixels.
QRect beside(QPoint anchor, QSize size);
/// Lets the window stand at `place` by the layer shell, once that is opened; null where there is
/// none. `place` is read then, and outlives it.
std::unique_ptr<LayerSurface> makeLayer(QWindow &window, LayerShell::Kind kind, const QRect &place);
/// An opaque bordered rectangle, which needs no compositor.
void paintBackground(QPainter &painter, QSize size);

} // namespace PanelWindow
