#pragma once

#include "Model/SystemMetric.h"
#include "Model/ThresholdTier.h"

#include <QBindable>
#include <QObject>
#include <QProperty>
#include <QString>

#include <optional>

class DefaultsStore;

/// The table of settings: type, property, the same with a capital, registered default. The key in
/// the store is the property's name.
// clang-format off
#define METERKIN_SETTINGS(SETTING) \
    SETTING(SystemMetrics::SystemMetric, menuBarMetric, MenuBarMetric, SystemMetric::memoryUsage) \
    SETTING(double, updateInterval, UpdateInterval, 3.0) /* seconds */ \
    SETTING(double, fanSpeedGreen, FanSpeedGreen, 2000.0) /* revolutions per minute */ \
    SETTING(double, fanSpeedYellow, FanSpeedYellow, 4000.0) \
    SETTING(double, memoryGreen, MemoryGreen, 60.0) /* percent */ \
    SETTING(double, memoryYellow, MemoryYellow, 80.0) \
    SETTING(double, cpuUsageGreen, CpuUsageGreen, 50.0) /* percent */ \
    SETTING(double, cpuUsageYellow, CpuUsageYellow, 80.0) \
    SETTING(bool, alertFanSpeed, AlertFanSpeed, false) \
    SETTING(bool, alertMemory, AlertMemory, false) \
    SETTING(bool, alertCPUUsage, AlertCPUUsage, false) \
    SETTING(bool, launchAtLogin, LaunchAtLogin, true) \
    SETTING(bool, hotkeyEnabled, HotkeyEnabled, std::nullopt) \
    SETTING(quint32, hotkeyKeyCode, HotkeyKeyCode, std::nullopt) /* 0: none */ \
    SETTING(quint32, hotkeyModifiers, HotkeyModifiers, std::nullopt)
// clang-format on

/// What a setting is as a property. The bindable is read-only: a value or binding set through it
/// would not reach the store.
#define METERKIN_SETTING_PROPERTY(Type, name, Name, standard)                                      \
public:                                                                                            \
    Q_PROPERTY(                                                                                    \
        Type name READ name WRITE set##Name NOTIFY name##Changed BINDABLE bindable##Name FINAL)    \
    Type name() const                                                                              \
    {                                                                                              \
        return m_##name.value();                                                                   \
    }                                                                                              \
    void set##Name(Type value);                                                                    \
    QBindable<Type> bindable##Name() const                                                         \
    {                                                                                              \
        return &m_##name;                                                                          \
    }                                                                                              \
    Q_SIGNAL void name##Changed();                                                                 \
                                                                                                   \
private:                                                                                           \
    Q_OBJECT_BINDABLE_PROPERTY(SettingsViewModel, Type, m_##name, &SettingsViewModel::name##Changed)

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

    /// What updateInterval comes to, in seconds; reading it counts as reading the setting.
    double intervalInEffect() const;

    /// The thresholds of one kind; reading them counts as reading both settings.
    Thresholds thresholds(SystemMetric metric) const;

    /// Why what is set holds for this run only, in a few words; empty while it is stored.
    QString storageProblem() const { return m_storageProblem; }
    QBindable<QString> bindableStorageProblem() const { return &m_storageProblem; }
    Q_SIGNAL void storageProblemChanged();

private:
    DefaultsStore &m_store;
    Q_OBJECT_BINDABLE_PROPERTY(SettingsViewModel, QString, m_storageProblem,
                               &SettingsViewModel::storageProblemChanged)
};

/// Makes known what keys read as that the user never set: those of the table that have a default,
/// and that the onboarding was not shown yet.
void registerSettingsDefaults(DefaultsStore &store);
