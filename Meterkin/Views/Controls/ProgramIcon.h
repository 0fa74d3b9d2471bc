#pragma once

#include <QQuickPaintedItem>

/// The program's icon, as large as the item lets a square be. GUI thread.
class ProgramIcon : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    void paint(QPainter *painter) override;
};
