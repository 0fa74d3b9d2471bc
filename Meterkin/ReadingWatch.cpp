#include "ReadingWatch.h"

#include "Model/DashboardViewModel.h"
#include "Model/SettingsViewModel.h"
#include "Platform/StatusItem.h"
#include "Sampling/MetricCollector.h"
#include "Services/AlertManager.h"

#include <algorithm>
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
    for (const SystemMetric metric : allMetrics) {
        m_values.thresholds[metric] = settings.thresholds(metric);
        m_values.isAlertOn[metric] = settings.of(metric)->isAlertOn();
    }
    m_values.title = settings.menuBarMetric();
    m_values.toolTipPeriod = m_watched.item.toolTipPeriod();
    m_values.areAll = isEverythingVisible();
    m_changes->follow(m_values);
}

void ReadingWatch::handleReading()
{
    m_isToolTipRead = false;
    m_watched.item.refreshToolTip();
    // The settings tell of their changes.
    if (m_values.areAll != isEverythingVisible()
        || m_values.toolTipPeriod != m_watched.item.toolTipPeriod())
        update();
}

bool ReadingWatch::isEverythingVisible() const
{
    // Without permission each reading asks for it again.
    const bool asks = !m_watched.alerts.hasPermission()
        && std::ranges::any_of(allMetrics,
                               [this](auto metric) { return m_values.isAlertOn[metric]; });
    return m_watched.isDashboardShown() || m_isToolTipRead || asks;
}

QString ReadingWatch::readToolTip()
{
    m_collector.publishNow();
    // Whoever looks at it now may still do so at the next reading.
    m_isToolTipRead = !m_watched.item.toolTipPeriod();
    update();
    return m_watched.dashboard.summary();
}
