#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

/// The titles of the metrics, by the number of SystemMetric.
class MetricTitles : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QStringList all READ all CONSTANT FINAL)

public:
    using QObject::QObject;

    QStringList all() const;
};
