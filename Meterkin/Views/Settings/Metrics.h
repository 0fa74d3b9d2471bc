#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

/// The metrics for pickers and repeaters, in the order of SystemMetric.
class Metrics : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QList<int> all READ all CONSTANT FINAL)
    Q_PROPERTY(QStringList titles READ titles CONSTANT FINAL)

public:
    using QObject::QObject;

    QList<int> all() const;
    QStringList titles() const;
};
