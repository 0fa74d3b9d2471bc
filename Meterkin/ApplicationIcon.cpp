#include "ApplicationIcon.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

QIcon applicationIcon()
{
    QSvgRenderer renderer(QStringLiteral(":/icons/org.meterkin.Meterkin.svg"));
    QIcon icon;
    for (const int size : {32, 48, 128}) { // title bars, task lists, switchers
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}
