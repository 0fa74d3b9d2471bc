#pragma once

#include "Model/TierColors.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The colours of the tiers in QML. Main thread only.
class TierColors : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE QColor of(int tier, bool isOnDark) const
    {
        return QColor::fromRgb(tierColor(static_cast<ThresholdTier>(tier), isOnDark));
    }
};
