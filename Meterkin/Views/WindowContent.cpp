#include "Views/WindowContent.h"

#include <QScreen>
#include <QtMath>

#include <algorithm>

void fillWindow(QQuickWindow &window, std::unique_ptr<QQuickItem> content, QSize least)
{
    QQuickItem *item = content.release();
    item->setParent(&window);
    item->setParentItem(window.contentItem());
    item->setFocus(true);
    const auto fit = [&window, item, least] {
        const QSize size(std::max(least.width(), qCeil(item->implicitWidth())),
                         std::max(least.height(), qCeil(item->implicitHeight())));
        window.setMinimumSize(size);
        window.setMaximumSize(size);
        window.resize(size);
        item->setSize(size);
    };
    QObject::connect(item, &QQuickItem::implicitWidthChanged, &window, fit);
    QObject::connect(item, &QQuickItem::implicitHeightChanged, &window, fit);
    fit();
}

void layOut(QQuickItem &item)
{
    // Rows and columns know their size only once what they hold does.
    for (QQuickItem *child : item.childItems())
        layOut(*child);
    item.ensurePolished();
}

void centreWindow(QQuickWindow &window)
{
    const QRect area = window.screen()->availableGeometry();
    window.setPosition(area.center() - QPoint(window.width() / 2, window.height() / 2));
}
