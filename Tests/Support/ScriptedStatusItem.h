#pragma once

#include "Platform/StatusItem.h"

#include <QList>

/// A status item that remembers what it is told.
class ScriptedStatusItem : public StatusItem {
public:
    bool hasButton() const override { return button; }
    void setTitle(const AttributedTitle &title) override { titles.append(title); }
    void setAccessibilityLabel(const QString &label) override { accessibilityLabel = label; }
    void setToolTip(const QString &text) override { toolTip = text; }
    QRect geometry() const override { return QRect(700, 0, 60, 24); }

    bool button = true;
    QList<AttributedTitle> titles;
    QString accessibilityLabel;
    QString toolTip;
};
