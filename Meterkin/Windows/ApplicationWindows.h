#pragma once

#include "Platform/WindowSystem.h"
#include "Platform/Windows.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

class DashboardViewModel;
class HotkeyRecorder;
class Platform;
class SettingsViewModel;
class UpdaterController;
class ViewEngine;

/// The windows of a running program. Views and their engine are made when they are first needed,
/// and the engine is given up when the last of them is gone.
class ApplicationWindows : public Windows {
    Q_OBJECT

public:
    /// Platform and models outlive it.
    ApplicationWindows(Platform &platform, std::unique_ptr<WindowSystem> system,
                       SettingsViewModel &settings, UpdaterController &updater,
                       DashboardViewModel &dashboard);
    ~ApplicationWindows() override;

    bool isDashboardShown() const override { return m_system->popover().isShown(); }
    void showDashboard(const QRect &item) override;
    void closeDashboard() override { m_system->popover().close(); }
    bool swallowsClick(const QRect &item) override;
    void openSettings() override;
    void showOnboarding() override;
    void closeOnboarding() override;
    void showAlert(const QString &messageText, const QString &informativeText) override;
    void readFeed(const QUrl &feed, QObject *receiver,
                  std::function<void(bool listsItems)> done) override;

    /// Null while there is none.
    QQuickWindow *settingsWindow() const { return m_settingsWindow.get(); }
    QQuickWindow *onboardingWindow() const { return m_onboardingWindow.get(); }

private:
    ViewEngine &engine();
    /// Later, when the last view may be gone; then freed memory is given back, too.
    void giveUpEngineSoon();
    /// Null where a part of Qt is missing, which the user is told.
    std::unique_ptr<QQuickItem> makeView(const QString &view, const QVariantMap &properties);
    std::unique_ptr<QQuickItem> makeDashboard();
    std::unique_ptr<QQuickWindow> makeSettingsWindow();
    std::unique_ptr<QQuickWindow> makeOnboardingWindow();

    Platform &m_platform;
    SettingsViewModel &m_settings;
    UpdaterController &m_updater;
    DashboardViewModel &m_dashboard;
    std::unique_ptr<HotkeyRecorder> m_recorder; ///< as long as the settings window
    std::unique_ptr<ViewEngine> m_engine;
    QPointer<QQuickItem> m_dashboardView;
    std::unique_ptr<QQuickWindow> m_settingsWindow;
    std::unique_ptr<QQuickWindow> m_onboardingWindow;
    std::unique_ptr<WindowSystem> m_system; ///< its popover owns the dashboard's view
};
