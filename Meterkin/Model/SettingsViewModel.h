#pragma once

#include "Model/MetricSettings.h"
#include "Model/StoredProperty.h"
#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"

#include <QBindable>
#include <QObject>
#include <QProperty>
#include <QString>

#include <optional>

class DefaultsStore;

/// The table of settings that belong to no single metric: type, property, the same with a capital,
/// registered default. The key in the store is the property's name.
// clang-format off
#define METERKIN_SETTINGS(SETTING) \
    SETTING(SystemMetrics::SystemMetric, menuBarMetric, MenuBarMetric, SystemMetric::MemoryUsage) \
    SETTING(double, updateInterval, UpdateInterval, 3.0) /* seconds */ \
    SETTING(bool, launchAtLogin, LaunchAtLogin, true) \
    SETTING(bool, hotkeyEnabled, HotkeyEnabled, std::nullopt) \
    SETTING(quint32, hotkeyKeyCode, HotkeyKeyCode, std::nullopt) /* 0: none */ \
    SETTING(quint32, hotkeyModifiers, HotkeyModifiers, std::nullopt)

/// A setting of one metric by its name in the store.
#define METERKIN_METRIC_SETTING(Type, name, Name, metric, part, Part) \
    Type name() const { return of(SystemMetric::metric)->part(); } \
    void set##Name(Type value) { of(SystemMetric::metric)->set##Part(value); }
// clang-format on

#define METERKIN_SETTING_PROPERTY(Type, name, Name, standard)                                      \
    METERKIN_STORED_PROPERTY(SettingsViewModel, Type, name, Name)

/// Every preference of the user, each kept in the store under its own name. A setter notifies when
/// the value differs and writes the store in any case; nothing is clamped or checked against
/// another setting. Main thread only.
class SettingsViewModel : public QObject {
    Q_OBJECT

    METERKIN_SETTINGS(METERKIN_SETTING_PROPERTY)
    Q_PROPERTY(double intervalInEffect READ intervalInEffect NOTIFY updateIntervalChanged FINAL)

    Q_PROPERTY(QString storageProblem READ storageProblem NOTIFY storageProblemChanged BINDABLE
                   bindableStorageProblem FINAL)

public:
    /// Registers the defaults, then loads. An integer that does not fit its setting ends the
    /// program. The store outlives the model.
    explicit SettingsViewModel(DefaultsStore &store, QObject *parent = nullptr);

    /// The settings of one metric. They belong to this model.
    Q_INVOKABLE MetricSettings *of(SystemMetrics::SystemMetric metric) const
    {
        return m_ofMetrics[metric];
    }

    METERKIN_METRIC_SETTING(double, fanSpeedGreen, FanSpeedGreen, FanSpeed, green, Green)
    METERKIN_METRIC_SETTING(double, fanSpeedYellow, FanSpeedYellow, FanSpeed, yellow, Yellow)
    METERKIN_METRIC_SETTING(double, memoryGreen, MemoryGreen, MemoryUsage, green, Green)
    METERKIN_METRIC_SETTING(double, memoryYellow, MemoryYellow, MemoryUsage, yellow, Yellow)
    METERKIN_METRIC_SETTING(double, cpuUsageGreen, CpuUsageGreen, CpuUsage, green, Green)
    METERKIN_METRIC_SETTING(double, cpuUsageYellow, CpuUsageYellow, CpuUsage, yellow, Yellow)
    METERKIN_METRIC_SETTING(bool, alertFanSpeed, AlertFanSpeed, FanSpeed, isAlertOn, IsAlertOn)
    METERKIN_METRIC_SETTING(bool, alertMemory, AlertMemory, MemoryUsage, isAlertOn, IsAlertOn)
    METERKIN_METRIC_SETTING(bool, alertCPUUsage, AlertCPUUsage, CpuUsage, isAlertOn, IsAlertOn)

    /// The updateInterval that is really used, in seconds; a binding that reads it follows it.
    double intervalInEffect() const;

    /// The thresholds of one metric; a binding that reads them follows both settings.
    Thresholds thresholds(SystemMetric metric) const;

    /// Why changes last for this run only, in a few words; empty while they are stored.
    QString storageProblem() const { return m_storageProblem; }
    QBindable<QString> bindableStorageProblem() const { return &m_storageProblem; }
    Q_SIGNAL void storageProblemChanged();

private:
    DefaultsStore &m_store;
    ByMetric<MetricSettings *> m_ofMetrics; ///< children
    Q_OBJECT_BINDABLE_PROPERTY(SettingsViewModel, QString, m_storageProblem,
                               &SettingsViewModel::storageProblemChanged)
};

/// Registers the defaults of all settings, and of "onboardingShown", which is not a property of
/// the model.
void registerSettingsDefaults(DefaultsStore &store);
