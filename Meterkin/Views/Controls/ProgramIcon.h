#pragma once

#include <QQuickPaintedItem>

/// The program's icon, in the largest square that fits. Main thread only.
class ProgramIcon : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    void paint(QPainter *painter) override;
};
