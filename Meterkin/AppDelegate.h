#pragma once

#include "DiskImageCleanup.h"
#include "Model/DashboardViewModel.h"
#include "Model/ObservationScope.h"
#include "Model/SettingsViewModel.h"
#include "Platform/Clock.h"
#include "Platform/Platform.h"
#include "ReadingWatch.h"
#include "Sampling/MetricCollector.h"
#include "Services/AlertManager.h"
#include "Services/HotkeyManager.h"
#include "StatusTitle.h"
#include "Updates/UpdaterController.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

/// Owns the running program: the models, the services and the status item. Main thread only.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// Creates collector, alert manager, settings, hot key and updates, in this order. The platform
    /// outlives the delegate.
    explicit AppDelegate(
        Platform &platform, MonotonicClock clock = [] { return std::chrono::steady_clock::now(); },
        WallClock wallClock = [] { return std::chrono::system_clock::now(); },
        QObject *parent = nullptr);
    ~AppDelegate() override;

    /// The launch sequence: status item, popover, login item, sampling, observers, hot key,
    /// clean-up, onboarding. Once.
    void applicationDidFinishLaunching();

    /// Closes the dashboard when it is shown, else shows it at the status item.
    void togglePopover();
    /// Shows the dashboard, or leaves it shown.
    void showDashboard();
    void closeDashboard();
    void openSettings();
    void showOnboarding();
    /// The onboarding is not shown again at the next start.
    void rememberOnboarding();
    /// Remembers that the onboarding was finished and closes its window.
    void completeOnboarding();
    void quit();

    MetricCollector &collector() { return m_collector; }
    SettingsViewModel &settings() { return m_settingsVM; }
    /// Null where they cannot be loaded. The first call loads them.
    Windows *windows();

signals:
    /// A sample has been taken in and shown.
    void tickHandled();

private:
    UpdaterController::CheckServices checkServices();
    void handleTick();
    void registerHotkey();
    void handleNotificationClick(const QString &identifier);

    DashboardViewModel &dashboard();
    StatusItem &statusItem();
    void requireMainThread() const;

    Platform &m_platform;
    MonotonicClock m_clock;

    MetricCollector m_collector;
    AlertManager m_alertManager;
    SettingsViewModel m_settingsVM;
    HotkeyManager m_hotkeyManager;
    std::unique_ptr<DashboardViewModel> m_dashboardVM; ///< from the launch sequence on
    std::unique_ptr<StatusItem> m_statusItem; ///< likewise
    std::unique_ptr<StatusTitle> m_title; ///< likewise
    std::unique_ptr<ReadingWatch> m_watch; ///< likewise
    UpdaterController m_updaterController;
    std::unique_ptr<Windows> m_windows; ///< null until the first one is wanted
    DiskImageCleanup m_diskImageCleanup;

    bool m_hasCheckedPresence = false;

    std::unique_ptr<ObservationScope> m_displaySettingsObserver;
    std::unique_ptr<ObservationScope> m_hotkeySettingsObserver;
};
