#pragma once

#include "Model/SystemMetric.h"
#include "Platform/Clock.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

class DashboardViewModel;
class NotificationCentre;
class SettingsViewModel;

/// Posts a notification when a metric rises into its red zone: one a crossing, and one in ten
/// minutes a metric at most. Nothing of its state outlives the run. Main thread only.
class AlertManager : public QObject {
    Q_OBJECT

public:
    /// What the identifiers of all alerts begin with.
    static const QString identifierPrefix;

    /// Asks `centre`, which outlives the manager, for the present permission.
    AlertManager(NotificationCentre &centre, WallClock clock, QObject *parent = nullptr);

    /// True only while the user is known to allow notifications.
    bool hasPermission() const { return m_hasPermission; }

    /// Asks the user; hasPermission() follows when the answer arrives.
    void requestPermission();

    /// The pass over all metrics, once a tick.
    void checkAlerts(const SettingsViewModel &settings, const DashboardViewModel &dashboard);

    /// Posts the notification of one metric; `value` in RPM or percent.
    void postAlert(SystemMetric metric, double value);

private:
    void evaluate(SystemMetric metric, double value, double limit);

    NotificationCentre &m_centre;
    WallClock m_clock;
    ByMetric<std::optional<std::chrono::system_clock::time_point>> m_lastAlertTime;
    ByMetric<bool> m_wasAboveThreshold; ///< at the last evaluation
    bool m_hasPermission = false;
};
