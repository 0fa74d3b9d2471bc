#include "ReadingWatch.h"

#include "Model/DashboardViewModel.h"
#include "Model/SettingsViewModel.h"
#include "Model/VisibleChanges.h"
#include "Platform/StatusItem.h"
#include "Sampling/MetricCollector.h"
#include "Services/AlertManager.h"

#include <utility>

ReadingWatch::ReadingWatch(MetricCollector &collector, Watched watched)
    : m_collector(collector)
    , m_watched(std::move(watched))
    , m_changes(std::make_shared<VisibleChanges>())
{
    collector.setFilter(
        [changes = m_changes](const Reading &reading) { return changes->areIn(reading); });
    m_watched.item.setToolTipSource([this] { return readToolTip(); });
    update();
}

void ReadingWatch::update()
{
    const SettingsViewModel &settings = m_watched.settings;
    VisibleValues values;
    bool isAnyAlertOn = false;
    for (const SystemMetric metric : allMetrics) {
        values.thresholds[metric] = settings.thresholds(metric);
        values.isAlertOn[metric] = settings.of(metric)->isAlertOn();
        isAnyAlertOn = isAnyAlertOn || values.isAlertOn[metric];
    }
    values.title = settings.menuBarMetric();
    values.toolTipPeriod = m_watched.item.toolTipPeriod();
    // Without permission each reading asks for it again.
    values.areAll = m_watched.isDashboardShown() || m_isToolTipRead
        || (isAnyAlertOn && !m_watched.alerts.hasPermission());
    m_changes->follow(values);
}

void ReadingWatch::handleReading()
{
    m_isToolTipRead = false;
    m_watched.item.refreshToolTip();
    update();
}

QString ReadingWatch::readToolTip()
{
    m_collector.publishNow();
    // Whoever looks at it now may still do so at the next reading.
    m_isToolTipRead = !m_watched.item.toolTipPeriod();
    update();
    return m_watched.dashboard.summary();
}
