#pragma once

#include "Model/SystemMetric.h"

#include <QObject>
#include <QProperty>
#include <QString>

#include <chrono>
#include <optional>

class DashboardViewModel;
class NotificationCentre;
class SettingsViewModel;

/// Posts a notification when a metric turns red: one for each rise, and for each metric at most one
/// in ten minutes. Its state is not stored. Main thread only.
class AlertManager : public QObject {
    Q_OBJECT

public:
    /// The beginning of all alerts' identifiers.
    static const QString identifierPrefix;

    using TimePoint = std::chrono::system_clock::time_point;

    /// Asks `centre`, which outlives the manager, for the present permission.
    explicit AlertManager(NotificationCentre &centre, QObject *parent = nullptr);

    /// True only while the user is known to allow notifications. Bindable.
    bool hasPermission() const { return m_hasPermission; }

    /// Asks the user; hasPermission() follows when the answer arrives.
    void requestPermission();

    /// Checks all metrics. Once per sample, with the time at which it was taken.
    void checkAlerts(const SettingsViewModel &settings, const DashboardViewModel &dashboard,
                     TimePoint time);

    /// Posts the notification of one metric; `value` in RPM or percent.
    void postAlert(SystemMetric metric, double value);

private:
    void evaluate(SystemMetric metric, double value, double limit, TimePoint time);

    NotificationCentre &m_centre;
    ByMetric<std::optional<TimePoint>> m_lastAlertTime;
    ByMetric<bool> m_wasAboveThreshold; ///< at the last evaluation
    QProperty<bool> m_hasPermission{false};
};
