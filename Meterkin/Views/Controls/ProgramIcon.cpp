#include "Views/Controls/ProgramIcon.h"

#include "Views/ApplicationIcon.h"

void ProgramIcon::paint(QPainter *painter)
{
    const double side = std::min(width(), height());
    drawApplicationIcon(*painter,
                        QRectF((width() - side) / 2.0, (height() - side) / 2.0, side, side));
}
