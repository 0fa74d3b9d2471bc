#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

/// What stands below the fan card for one fan.
struct FanRow {
    Q_GADGET
    QML_VALUE_TYPE(fanRow)
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QString speed MEMBER speed CONSTANT)
    Q_PROPERTY(bool hasRange READ hasRange CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)
    Q_PROPERTY(QString accessibleText READ accessibleText CONSTANT)

public:
    QString label; ///< empty for the only fan
    QString speed;
    QString range; ///< empty unless both ends are known

    bool hasRange() const { return !range.isEmpty(); }
    /// Beside the label.
    QString text() const { return hasRange() ? range : speed; }
    QString accessibleText() const
    {
        QStringList parts{label, speed, range};
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }

    bool operator==(const FanRow &) const = default;
};
