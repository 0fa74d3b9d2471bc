#pragma once

#include <QFont>
#include <QPoint>
#include <QRect>

class QPainter;

/// What the menu and the tool tip beside a panel have in common.
namespace PanelPopup {

QFont font();
/// A place of that size next to `anchor`, on the side where the screen has room.
QRect beside(QPoint anchor, QSize size);
/// An opaque bordered rectangle: right with and without a compositor.
void paintBackground(QPainter &painter, QSize size);

} // namespace PanelPopup
