#pragma once

#include <QObject>
#include <QString>

/// What finds, downloads and installs updates, with windows of its own. Main thread only.
class UpdateFramework : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Starts the checks in the background. Once.
    virtual void start() = 0;

    /// After start().
    virtual void setAutomaticallyDownloadsUpdates(bool automatically) = 0;

    /// From now on canCheckForUpdatesChanged() tells, first of the present state. Once, after
    /// start().
    virtual void observe() = 0;

    /// Why nothing can be checked at all on this machine, as a sentence for the user; empty when it
    /// can, even while a check runs.
    virtual QString unavailableReason() const { return {}; }

    /// Whether it takes updates from the feed that the build names; false when it knows by itself
    /// where they are.
    virtual bool needsFeed() const { return true; }

    /// A check that the user asked for; opens the framework's own windows. One in the background
    /// gives way to it; ignored while another one runs, and where nothing can be checked.
    virtual void checkForUpdates() = 0;

signals:
    /// False while a check runs. Any thread.
    void canCheckForUpdatesChanged(bool canCheck);
    void unavailableReasonChanged();
};
