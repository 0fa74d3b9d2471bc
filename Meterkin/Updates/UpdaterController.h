#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/InformationAlert.h"
#include "Platform/UpdateFramework.h"
#include "Updates/UpdateFeedProbe.h"

#include <QObject>
#include <QProperty>
#include <QVariantMap>

#include <chrono>

/// Software updates for the rest of the program: starts the update framework, mirrors whether it
/// can check now, keeps the automatic-download preference, and asks the feed itself before it lets
/// the framework open its windows. Main thread only.
class UpdaterController : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged
                   BINDABLE bindableCanCheckForUpdates FINAL)
    Q_PROPERTY(QString unavailableReason READ unavailableReason NOTIFY unavailableReasonChanged
                   BINDABLE bindableUnavailableReason FINAL)
    Q_PROPERTY(bool automaticallyDownloadsUpdates READ automaticallyDownloadsUpdates WRITE
                   setAutomaticallyDownloadsUpdates NOTIFY automaticallyDownloadsUpdatesChanged
                       BINDABLE bindableAutomaticallyDownloadsUpdates FINAL)

public:
    /// Starts the framework at once. The dictionary is the platform's. The rest outlives the
    /// controller.
    UpdaterController(UpdateFramework &framework, DefaultsStore &store, QVariantMap dictionary,
                      InformationAlert &alert,
                      std::chrono::milliseconds feedTimeLimit = UpdateFeedProbe::TimeLimit,
                      QObject *parent = nullptr);

    /// Why updates cannot be checked at all, as a sentence for the user; empty when they can.
    QString unavailableReason() const { return m_unavailableReason; }
    QBindable<QString> bindableUnavailableReason() const { return &m_unavailableReason; }

    bool canCheckForUpdates() const { return m_canCheckForUpdates; }
    QBindable<bool> bindableCanCheckForUpdates() const { return &m_canCheckForUpdates; }

    bool automaticallyDownloadsUpdates() const { return m_automaticallyDownloadsUpdates; }
    /// Applied to the framework and stored at once, an equal value too.
    void setAutomaticallyDownloadsUpdates(bool automatically);
    QBindable<bool> bindableAutomaticallyDownloadsUpdates() const
    {
        return &m_automaticallyDownloadsUpdates;
    }

public slots:
    /// The user asked for it. A feed that lists any item is left to the framework, and so is a
    /// check without an address where the framework needs none; whatever else comes of it, the user
    /// is told that there is nothing newer. Checks may overlap; each ends in its own answer, or in
    /// none when the controller is gone by then.
    void checkForUpdates();

signals:
    void canCheckForUpdatesChanged();
    void unavailableReasonChanged();
    void automaticallyDownloadsUpdatesChanged();

private:
    void showUpToDateAlert();
    QString textOf(const QString &key, const QString &fallback = {}) const;

    UpdateFramework &m_framework;
    DefaultsStore &m_store;
    QVariantMap m_dictionary;
    InformationAlert &m_alert;
    std::chrono::milliseconds m_feedTimeLimit;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdaterController, bool, m_canCheckForUpdates, false,
                                         &UpdaterController::canCheckForUpdatesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdaterController, QString, m_unavailableReason,
                               &UpdaterController::unavailableReasonChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdaterController, bool, m_automaticallyDownloadsUpdates,
                                         true,
                                         &UpdaterController::automaticallyDownloadsUpdatesChanged)
};
