#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/// What the steppers of the thresholds show and accept. Metrics are enumerators of SystemMetric,
/// values in the metric's unit. Main thread only.
class ThresholdEntry : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE double minimum(int metric) const;
    Q_INVOKABLE double maximum(int metric) const;
    Q_INVOKABLE double step(int metric) const;

    /// With the unit and without decimals.
    Q_INVOKABLE QString text(int metric, double value) const;
    /// The number typed, with or without the unit, to the nearest whole step within the bounds;
    /// `value` when it is none.
    Q_INVOKABLE double entered(int metric, const QString &typed, double value) const;
    /// The value moved by so many steps, at most to a bound. A value that is already beyond the
    /// bound stays.
    Q_INVOKABLE double stepped(int metric, double value, int steps) const;
};
