#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/Linux/Bus/Service.h"
#include "Platform/Linux/Updates/PackageUpdater.h"
#include "Platform/Linux/Updates/Schedule.h"
#include "Platform/Linux/Windows/Dialogs/Window.h"
#include "Platform/Linux/Windows/Dialogs/UpdateSession.h"
#include "Platform/NotificationCentre.h"
#include "Platform/UpdateFramework.h"

#include <functional>
#include <memory>

/// Updates through the system's package manager, with a window and a notification of its own. Only
/// the user's own click ever installs something.
class LinuxUpdateFramework : public UpdateFramework {
    Q_OBJECT

public:
    /// What it works with; the objects outlive it.
    struct Surroundings {
        BusConnection &systemBus;
        DefaultsStore &store;
        WindowStyle &style;
        const DesktopAppearance &appearance;
        NotificationCentre &notifications;
        QString version; ///< of the running program
        QString program; ///< its file, by the path that it was started from
        std::function<void()> restart; ///< ends the program and starts it anew
    };
    struct Times {
        std::chrono::milliseconds patience = PackageKitTransaction::Patience;
        std::chrono::milliseconds firstCheck = UpdateSchedule::FirstLook;
    };

    explicit LinuxUpdateFramework(Surroundings surroundings, Times times,
                                  QObject *parent = nullptr);
    explicit LinuxUpdateFramework(Surroundings surroundings)
        : LinuxUpdateFramework(std::move(surroundings), Times())
    {
    }
    ~LinuxUpdateFramework() override;

    void start() override;
    void setAutomaticallyDownloadsUpdates(bool automatically) override;
    void observe() override { emit canCheckForUpdatesChanged(m_canCheck); }
    bool canCheckForUpdates() const { return m_canCheck; }
    QString unavailableReason() const override { return m_reason; }
    bool needsFeed() const override { return false; }
    void checkForUpdates() override;

    /// What the window shows; null while there is nothing to show.
    UpdateSession *session() const { return m_session.get(); }

private:
    using Phase = UpdateSession::Phase;

    void connectUpdater();
    void updateAvailability();
    void checkInBackground();
    void handleClick(const QString &identifier);

    void openWindow();
    void handleClosed();
    void beginCheck();
    void beginInstallation();
    void cancel();
    void showOffer();
    void enter(Phase phase);

    void handleChecked();
    void handleDownloaded();
    void handleInstalled();
    void handleFailed(const QString &problem);
    void announce();
    void notify(const QString &title, const QString &body);

    Surroundings m_surroundings;
    Times m_times;
    PackageUpdater m_updater;
    UpdateSchedule m_schedule;
    std::unique_ptr<BusService> m_service; ///< from start() on
    bool m_downloadsAutomatically = false;
    bool m_canCheck = false;
    bool m_isBackground = false; ///< whether the work is none of the window's
    QString m_reason;
    QString m_downloaded; ///< the package that has been fetched already
    std::unique_ptr<UpdateSession> m_session;
    std::unique_ptr<DialogWindow> m_window; ///< gone before the session it shows
};
