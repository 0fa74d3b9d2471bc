#pragma once

#include "Platform/StatusItem.h"

#include <QList>

/// A status item that remembers what it is told.
class ScriptedStatusItem : public StatusItem {
public:
    bool hasButton() const override { return button; }
    QColor systemColor(SystemColor color) const override { return colors[static_cast<int>(color)]; }
    void setTitle(const AttributedTitle &title) override { titles.append(title); }
    void setAccessibilityLabel(const QString &label) override { accessibilityLabel = label; }
    void setToolTip(const QString &text) override { toolTip = text; }
    QRect geometry() const override { return QRect(700, 0, 60, 24); }

    static constexpr QColor colors[] = {QColor(0, 200, 0), QColor(200, 200, 0), QColor(200, 0, 0)};
    bool button = true;
    QList<AttributedTitle> titles;
    QString accessibilityLabel;
    QString toolTip;
};
