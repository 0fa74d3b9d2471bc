#pragma once

#include "Model/StoredProperty.h"
#include "Model/SystemMetric.h"

#include <QObject>
#include <QVariantMap>

/// What the user has set for one metric. Nothing is clamped. Main thread only.
class MetricSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT FINAL)

    METERKIN_STORED_PROPERTY(MetricSettings, double, green, Green) // the tier ends there
    METERKIN_STORED_PROPERTY(MetricSettings, double, yellow, Yellow)
    METERKIN_STORED_PROPERTY(MetricSettings, bool, isAlertOn, IsAlertOn) // when it turns red

public:
    /// Loads from the store, which knows the defaults and outlives it.
    MetricSettings(SystemMetric metric, DefaultsStore &store, QObject *parent);

    /// The metric's name, as the heading of its settings.
    QString name() const;

    /// Adds the values of settings that the user has never changed.
    static void addDefaults(SystemMetric metric, QVariantMap &defaults);

private:
    SystemMetric m_metric;
    DefaultsStore &m_store;
};
