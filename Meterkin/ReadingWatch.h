#pragma once

#include "Model/VisibleChanges.h"

#include <QString>

#include <functional>
#include <memory>

class AlertManager;
class DashboardViewModel;
class MetricCollector;
class SettingsViewModel;
class StatusItem;

/// Lets the collector publish a reading at once where somebody would know the difference: the
/// title, an alert, the open dashboard, a tool tip in sight. Main thread only.
class ReadingWatch {
public:
    struct Watched {
        const SettingsViewModel &settings;
        const AlertManager &alerts;
        const DashboardViewModel &dashboard;
        StatusItem &item;
        std::function<bool()> isDashboardShown;
    };

    /// Collector and all that is watched outlive it. Gives the status item its tool tip.
    ReadingWatch(MetricCollector &collector, Watched watched);

    /// To be called when anything watched has changed.
    void update();
    /// To be called when a reading has been shown. A tool tip in sight is read again.
    void handleReading();

private:
    bool isEverythingVisible() const;
    QString readToolTip();

    MetricCollector &m_collector;
    Watched m_watched;
    std::shared_ptr<VisibleChanges> m_changes; ///< shared with the thread that asks it
    VisibleValues m_values; ///< as it was last told
    bool m_isToolTipRead = false; ///< since the last reading
};
