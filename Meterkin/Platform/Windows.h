#pragma once

#include <QObject>
#include <QRect>
#include <QString>
#include <QUrl>

#include <functional>

/// The program's windows, and the access to the network, which is loaded with them: both are rarely
/// needed and take more memory than all else. Main thread only.
class Windows : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool isDashboardShown() const = 0;
    /// The dashboard is a popover at the status item, which is in logical coordinates; empty when
    /// its place is not known. A shown one stays.
    virtual void showDashboard(const QRect &item) = 0;
    virtual void closeDashboard() = 0;
    /// Whether a click on the item now belongs to the press that has closed the dashboard, and so
    /// must not show it again. True at most once for each press.
    virtual bool swallowsClick(const QRect &item) = 0;

    /// Brings the one settings window to the front. It is built the first time, and merely hidden
    /// when the user closes it.
    virtual void openSettings() = 0;

    /// Opens the onboarding at its first screen. Closing its window leaves it unfinished.
    virtual void showOnboarding() = 0;
    virtual void closeOnboarding() = 0;

    /// Shows a short message with one button, "OK".
    virtual void showAlert(const QString &messageText, const QString &informativeText) = 0;

    /// Calls `done` once, later, with whether an update feed at an HTTP address lists any item.
    /// Never when the receiver is destroyed first.
    virtual void readFeed(const QUrl &feed, QObject *receiver,
                          std::function<void(bool listsItems)> done) = 0;

signals:
    void settingsRequested();
    void quitRequested();
    void dashboardCloseRequested();
    void intervalChosen(double seconds);
    void launchAtLoginChosen(bool wish);
    void onboardingStarted();
    void onboardingCompleted();
};
