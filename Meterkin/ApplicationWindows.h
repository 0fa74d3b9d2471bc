#pragma once

#include <QObject>
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

/// What the program shows beside its status item: the dashboard in the popover, the settings window
/// and the onboarding. Views and their engine are made when they are first needed, and the engine
/// is given up when the last of them is gone. Main thread only.
class ApplicationWindows : public QObject {
    Q_OBJECT

public:
    /// All three outlive it.
    ApplicationWindows(Platform &platform, SettingsViewModel &settings, UpdaterController &updater,
                       QObject *parent = nullptr);
    ~ApplicationWindows() override;

    /// A dashboard for the popover, which owns it. The model outlives it.
    std::unique_ptr<QQuickItem> makeDashboard(DashboardViewModel &model);

    /// Brings the one settings window to the front. It is built the first time, and merely hidden
    /// when the user closes it. It follows the number of fans in the model, which outlives it.
    void openSettings(const DashboardViewModel &model);

    /// Opens the onboarding at its first screen. Closing its window leaves it unfinished.
    void showOnboarding();
    void closeOnboarding();

    /// Null while there is none.
    QQuickWindow *settingsWindow() const { return m_settingsWindow.get(); }
    QQuickWindow *onboardingWindow() const { return m_onboardingWindow.get(); }

signals:
    void settingsRequested();
    void quitRequested();
    void dashboardCloseRequested();
    void intervalChosen(double seconds);
    void launchAtLoginChosen(bool wish);
    void onboardingStarted();
    void onboardingCompleted();

private:
    ViewEngine &engine();
    /// Later, when the last view may be gone; then freed memory is given back, too.
    void giveUpEngineSoon();
    std::unique_ptr<QQuickWindow> makeSettingsWindow(const DashboardViewModel &model);
    std::unique_ptr<QQuickWindow> makeOnboardingWindow();

    Platform &m_platform;
    SettingsViewModel &m_settings;
    UpdaterController &m_updater;
    std::unique_ptr<HotkeyRecorder> m_recorder; ///< as long as the settings window
    std::unique_ptr<ViewEngine> m_engine;
    QPointer<QQuickItem> m_dashboard;
    std::unique_ptr<QQuickWindow> m_settingsWindow;
    std::unique_ptr<QQuickWindow> m_onboardingWindow;
};
