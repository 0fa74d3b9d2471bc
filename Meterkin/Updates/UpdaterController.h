#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/UpdateFramework.h"

#include <QObject>
#include <QProperty>
#include <QUrl>
#include <QVariantMap>

#include <functional>

/// Software updates for the rest of the program: starts the update framework, mirrors whether it
/// can check now, and stores the automatic-download setting. Reads the feed before it lets the
/// framework open its windows. Main thread only.
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
    /// What only a check that the user asks for needs. As in Windows.
    struct CheckServices {
        std::function<void(const QUrl &feed, QObject *receiver,
                           std::function<void(bool listsItems)> done)>
            readFeed;
        std::function<void(const QString &messageText, const QString &informativeText)> showAlert;
    };

    /// Starts the framework. The dictionary is the platform's; the other objects outlive the
    /// controller.
    UpdaterController(UpdateFramework &framework, DefaultsStore &store, QVariantMap dictionary,
                      CheckServices services, QObject *parent = nullptr);

    /// Why updates cannot be checked at all, as a sentence for the user; empty when they can.
    QString unavailableReason() const { return m_unavailableReason; }
    QBindable<QString> bindableUnavailableReason() const { return &m_unavailableReason; }

    bool canCheckForUpdates() const { return m_canCheckForUpdates; }
    QBindable<bool> bindableCanCheckForUpdates() const { return &m_canCheckForUpdates; }

    bool automaticallyDownloadsUpdates() const { return m_automaticallyDownloadsUpdates; }
    /// Passes the value to the framework and stores it, also when it is equal.
    void setAutomaticallyDownloadsUpdates(bool automatically);
    QBindable<bool> bindableAutomaticallyDownloadsUpdates() const
    {
        return &m_automaticallyDownloadsUpdates;
    }

public slots:
    /// A check that the user asks for. The framework takes over when the feed lists any item, or
    /// when there is no address and it needs none; otherwise an alert says that there is nothing
    /// newer. Checks may overlap: each has its own result, or none when the controller is destroyed
    /// first.
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
    CheckServices m_services;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdaterController, bool, m_canCheckForUpdates, false,
                                         &UpdaterController::canCheckForUpdatesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdaterController, QString, m_unavailableReason,
                               &UpdaterController::unavailableReasonChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdaterController, bool, m_automaticallyDownloadsUpdates,
                                         true,
                                         &UpdaterController::automaticallyDownloadsUpdatesChanged)
};
