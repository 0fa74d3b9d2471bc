#include "Views/ApplicationIcon.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {32, 48, 128}) { // title bars, task lists, switchers
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawApplicationIcon(painter, pixmap.rect());
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void drawApplicationIcon(QPainter &painter, const QRectF &square)
{
    QSvgRenderer(QStringLiteral(":/icons/org.meterkin.Meterkin.svg")).render(&painter, square);
}
