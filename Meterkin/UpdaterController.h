#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/UpdateFramework.h"

#include <QObject>
#include <QProperty>

/// Software updates for the rest of the program: starts the update framework, mirrors whether it
/// can check now, and keeps the automatic-download preference. Main thread only.
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
    /// Starts the framework at once. Without one nothing can be checked and only the preference is
    /// kept; one that is given outlives the controller, as the store does.
    UpdaterController(UpdateFramework *framework, DefaultsStore &store, QObject *parent = nullptr);

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
    /// The user asked for it. Nothing happens without a framework.
    void checkForUpdates();

signals:
    void canCheckForUpdatesChanged();
    void unavailableReasonChanged();
    void automaticallyDownloadsUpdatesChanged();

private:
    UpdateFramework *m_framework;
    DefaultsStore &m_store;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdaterController, bool, m_canCheckForUpdates, false,
                                         &UpdaterController::canCheckForUpdatesChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        UpdaterController, QString, m_unavailableReason,
        QStringLiteral("Updates are not available on this computer."),
        &UpdaterController::unavailableReasonChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdaterController, bool, m_automaticallyDownloadsUpdates,
                                         true,
                                         &UpdaterController::automaticallyDownloadsUpdatesChanged)
};
