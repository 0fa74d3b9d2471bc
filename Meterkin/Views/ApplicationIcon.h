#pragma once

class QIcon;
class QPainter;
class QRectF;

/// The program's icon for its windows. Not cached.
QIcon applicationIcon();

/// Draws it into a square.
void drawApplicationIcon(QPainter &painter, const QRectF &square);
