#pragma once

#include "Model/DashboardViewModel.h"
#include "Model/SettingsViewModel.h"
#include "Views/Dashboard/FanRow.h"
#include "Views/Dashboard/MetricCard.h"

#include <QProperty>
#include <QQmlParserStatus>
#include <QStringList>

/// The readings as the dashboard words them. It follows the models only while it is active, so that
/// a hidden dashboard costs nothing. Main thread only.
class DashboardReadings : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(DashboardViewModel *viewModel MEMBER m_viewModel NOTIFY modelsChanged REQUIRED FINAL)
    Q_PROPERTY(SettingsViewModel *settings MEMBER m_settings NOTIFY modelsChanged REQUIRED FINAL)
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged FINAL)

    Q_PROPERTY(MetricCard memory READ memory NOTIFY memoryChanged BINDABLE bindableMemory FINAL)
    /// Three texts, or none.
    Q_PROPERTY(QList<QString> memoryBreakdown READ memoryBreakdown NOTIFY memoryBreakdownChanged
                   BINDABLE bindableMemoryBreakdown FINAL)
    Q_PROPERTY(MetricCard cpu READ cpu NOTIFY cpuChanged BINDABLE bindableCpu FINAL)
    Q_PROPERTY(QList<double> perCoreUsage READ perCoreUsage NOTIFY perCoreUsageChanged BINDABLE
                   bindablePerCoreUsage FINAL)
    Q_PROPERTY(MetricCard fan READ fan NOTIFY fanChanged BINDABLE bindableFan FINAL)
    Q_PROPERTY(bool hasFans READ hasFans NOTIFY hasFansChanged BINDABLE bindableHasFans FINAL)
    Q_PROPERTY(QList<FanRow> fans READ fans NOTIFY fansChanged BINDABLE bindableFans FINAL)

public:
    using QObject::QObject;

    bool isActive() const { return m_isActive; }
    void classBegin() override { }
    /// Reads once in any case: a dashboard is measured before it is shown.
    void componentComplete() override;

    /// The models must have been set by the time it becomes active.
    void setActive(bool active);

    MetricCard memory() const { return m_memory; }
    QBindable<MetricCard> bindableMemory() const { return &m_memory; }
    QStringList memoryBreakdown() const { return m_memoryBreakdown; }
    QBindable<QStringList> bindableMemoryBreakdown() const { return &m_memoryBreakdown; }
    MetricCard cpu() const { return m_cpu; }
    QBindable<MetricCard> bindableCpu() const { return &m_cpu; }
    QList<double> perCoreUsage() const { return m_perCoreUsage; }
    QBindable<QList<double>> bindablePerCoreUsage() const { return &m_perCoreUsage; }
    MetricCard fan() const { return m_fan; }
    QBindable<MetricCard> bindableFan() const { return &m_fan; }
    bool hasFans() const { return m_hasFans; }
    QBindable<bool> bindableHasFans() const { return &m_hasFans; }
    QList<FanRow> fans() const { return m_fans; }
    QBindable<QList<FanRow>> bindableFans() const { return &m_fans; }

signals:
    void modelsChanged();
    void activeChanged();
    void memoryChanged();
    void memoryBreakdownChanged();
    void cpuChanged();
    void perCoreUsageChanged();
    void fanChanged();
    void hasFansChanged();
    void fansChanged();

private:
    MetricCard memoryCard() const;
    QStringList memoryBreakdownTexts() const;
    MetricCard cpuCard() const;
    MetricCard fanCard() const;
    QList<FanRow> fanRows() const;

    bool m_isActive = false;
    DashboardViewModel *m_viewModel = nullptr;
    SettingsViewModel *m_settings = nullptr;

    Q_OBJECT_BINDABLE_PROPERTY(DashboardReadings, MetricCard, m_memory,
                               &DashboardReadings::memoryChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DashboardReadings, QStringList, m_memoryBreakdown,
                               &DashboardReadings::memoryBreakdownChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DashboardReadings, MetricCard, m_cpu, &DashboardReadings::cpuChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DashboardReadings, QList<double>, m_perCoreUsage,
                               &DashboardReadings::perCoreUsageChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DashboardReadings, MetricCard, m_fan, &DashboardReadings::fanChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DashboardReadings, bool, m_hasFans,
                               &DashboardReadings::hasFansChanged)
    Q_OBJECT_BINDABLE_PROPERTY(DashboardReadings, QList<FanRow>, m_fans,
                               &DashboardReadings::fansChanged)
};
