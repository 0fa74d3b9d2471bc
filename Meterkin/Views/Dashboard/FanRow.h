#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// What stands below the fan card for one fan.
struct FanRow {
    Q_GADGET
    QML_VALUE_TYPE(fanRow)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QString range MEMBER range CONSTANT)
    Q_PROPERTY(QString accessibleText READ accessibleText CONSTANT)

public:
    QString label; ///< empty for the only fan
    QString range; ///< empty unless both ends are known

    QString accessibleText() const
    {
        return label.isEmpty() || range.isEmpty() ? label + range
                                                  : label + QStringLiteral(", ") + range;
    }

    bool operator==(const FanRow &) const = default;
};
