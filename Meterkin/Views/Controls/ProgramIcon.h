#pragma once

#include "Views/DrawnItem.h"

/// The program's icon, in the largest square that fits. Main thread only.
class ProgramIcon : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT

public:
    using DrawnItem::DrawnItem;

    void paint(QPainter *painter) override;
};
