#pragma once

#include "Model/DashboardViewModel.h"
#include "Model/ObservationScope.h"
#include "Model/SettingsViewModel.h"
#include "Views/Dashboard/FanRow.h"
#include "Views/Dashboard/MetricCard.h"

#include <QAbstractListModel>
#include <QQmlParserStatus>
#include <QStringList>

#include <array>
#include <memory>

/// The readings as texts and numbers to show, one row per metric. It follows the models only while
/// it is active, so that a hidden dashboard costs nothing. Main thread only.
class DashboardReadings : public QAbstractListModel, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(DashboardViewModel *viewModel MEMBER m_viewModel NOTIFY modelsChanged REQUIRED FINAL)
    Q_PROPERTY(SettingsViewModel *settings MEMBER m_settings NOTIFY modelsChanged REQUIRED FINAL)
    Q_PROPERTY(bool active READ isActive WRITE setActive NOTIFY activeChanged FINAL)

public:
    /// The card and the details below it; lists that are empty for a metric without such details.
    enum Role { Card = Qt::UserRole, Breakdown, PerCoreUsage, Fans };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    bool isActive() const { return m_scope != nullptr; }
    /// The models must have been set by the time it becomes active.
    void setActive(bool active);

    void classBegin() override { }
    /// Reads once, active or not: the popover needs the dashboard's size before it shows it.
    void componentComplete() override;

signals:
    void modelsChanged();
    void activeChanged();

private:
    struct Row {
        MetricCard card;
        QStringList breakdown;
        QList<double> perCoreUsage; ///< percent
        QList<FanRow> fans;
    };

    void refresh();
    Row makeRow(SystemMetric metric) const;

    DashboardViewModel *m_viewModel = nullptr;
    SettingsViewModel *m_settings = nullptr;
    std::array<Row, dashboardMetrics.size()> m_rows;
    std::unique_ptr<ObservationScope> m_scope; ///< while it is active
};
