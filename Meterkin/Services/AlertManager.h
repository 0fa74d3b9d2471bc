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

/// Posts a notification when a metric turns red: one for each rise, and for each metric at most one
/// in ten minutes. Its state is not stored. Main thread only.
class AlertManager : public QObject {
    Q_OBJECT

public:
    /// The beginning of all alerts' identifiers.
    static const QString identifierPrefix;

    /// Asks `centre`, which outlives the manager, for the present permission.
    AlertManager(NotificationCentre &centre, WallClock clock, QObject *parent = nullptr);

    /// True only while the user is known to allow notifications.
    bool hasPermission() const { return m_hasPermission; }

    /// Asks the user; hasPermission() follows when the answer arrives.
    void requestPermission();

    /// Checks all metrics. Once per sample.
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
