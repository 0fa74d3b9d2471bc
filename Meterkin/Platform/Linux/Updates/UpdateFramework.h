#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/Linux/Bus/Service.h"
#include "Platform/Linux/Updates/PackageUpdater.h"
#include "Platform/Linux/Updates/ReplacementWatch.h"
#include "Platform/Linux/Updates/RestartOffer.h"
#include "Platform/Linux/Updates/Schedule.h"
#include "Platform/Linux/Updates/Session.h"
#include "Platform/Linux/Updates/Window.h"
#include "Platform/NotificationCentre.h"
#include "Platform/UpdateFramework.h"

#include <functional>
#include <memory>

/// Updates through PackageKit, with a window and notifications. Only a click of the user installs
/// anything. Offers a restart after an update, whoever made it.
class LinuxUpdateFramework : public UpdateFramework {
    Q_OBJECT

public:
    /// The objects outlive the framework.
    struct Dependencies {
        BusConnection &systemBus;
        DefaultsStore &store;
        NotificationCentre &notifications;
        /// Null where windows cannot be shown, of which the user has been told.
        std::function<std::unique_ptr<UpdateWindow>(UpdateSession &session)> makeWindow;
        QString version; ///< of the running program
        QString program; ///< its file
        RestartOffer &restartOffer;
        ReplacementWatch &replacement;
    };
    struct Times {
        std::chrono::milliseconds timeout = PackageKitTransaction::Timeout;
        std::chrono::milliseconds firstCheck = UpdateSchedule::FirstCheck;
    };

    explicit LinuxUpdateFramework(Dependencies dependencies, Times times,
                                  QObject *parent = nullptr);
    explicit LinuxUpdateFramework(Dependencies dependencies)
        : LinuxUpdateFramework(std::move(dependencies), Times())
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

    /// The model of the window; null while there is nothing to show.
    UpdateSession *session() const { return m_session.get(); }

private:
    using Phase = UpdateSession::Phase;

    void connectUpdater();
    void updateAvailability();
    void checkInBackground();
    void handleClick(const QString &identifier);

    bool openWindow(); ///< false where windows cannot be shown
    void handleClosed();
    void beginCheck();
    void beginInstallation();
    void cancel();
    void showOffer();
    void enter(Phase phase);

    void handleChecked();
    void handleDownloaded();
    void handleInstalled();
    void handleReplaced();
    void handleFailed(const QString &problem);
    void announce();
    void notify(const QString &title, const QString &body);

    Dependencies m_dependencies;
    Times m_times;
    PackageUpdater m_updater;
    UpdateSchedule m_schedule;
    std::unique_ptr<BusService> m_service; ///< from start() on
    bool m_downloadsAutomatically = false;
    bool m_canCheck = false;
    bool m_isBackground = false; ///< whether the updater works for nobody's window
    QString m_reason;
    QString m_downloaded; ///< the package that is downloaded already
    std::unique_ptr<UpdateSession> m_session;
    std::unique_ptr<UpdateWindow> m_window; ///< destroyed before the session that it shows
};
