#pragma once

#include <QObject>
#include <QProperty>
#include <QString>

/// One check for updates, from its start to its result. The update framework writes it; the update
/// window shows it and emits what the user requests. Main thread only.
class UpdateSession : public QObject {
    Q_OBJECT
    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged BINDABLE bindablePhase FINAL)
    Q_PROPERTY(QString currentVersion READ currentVersion NOTIFY currentVersionChanged BINDABLE
                   bindableCurrentVersion FINAL)
    Q_PROPERTY(QString offeredVersion READ offeredVersion NOTIFY offeredVersionChanged BINDABLE
                   bindableOfferedVersion FINAL)
    Q_PROPERTY(QString notes READ notes NOTIFY notesChanged BINDABLE bindableNotes FINAL)
    Q_PROPERTY(int percent READ percent NOTIFY percentChanged BINDABLE bindablePercent FINAL)
    Q_PROPERTY(bool isCancellable READ isCancellable NOTIFY isCancellableChanged BINDABLE
                   bindableIsCancellable FINAL)
    Q_PROPERTY(bool isDownloaded READ isDownloaded NOTIFY isDownloadedChanged BINDABLE
                   bindableIsDownloaded FINAL)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged BINDABLE bindableProblem FINAL)

public:
    enum class Phase {
        Checking,
        UpToDate,
        Offered,
        Downloading,
        Installing,
        Installed, ///< takes effect at the next start of the program
        Failed,
    };
    Q_ENUM(Phase)

    using QObject::QObject;

    Phase phase() const { return m_phase; }
    QString currentVersion() const { return m_currentVersion; }
    QString offeredVersion() const { return m_offeredVersion; }
    QString notes() const { return m_notes; }
    int percent() const { return m_percent; }
    bool isCancellable() const { return m_isCancellable; }
    bool isDownloaded() const { return m_isDownloaded; }
    QString problem() const { return m_problem; }

    QBindable<Phase> bindablePhase() { return &m_phase; }
    /// That of the running program.
    QBindable<QString> bindableCurrentVersion() { return &m_currentVersion; }
    /// Empty until something is offered.
    QBindable<QString> bindableOfferedVersion() { return &m_offeredVersion; }
    /// What is new, as plain text; empty when nothing is known.
    QBindable<QString> bindableNotes() { return &m_notes; }
    /// Of the current phase, 0 to 100; -1 when it is not known.
    QBindable<int> bindablePercent() { return &m_percent; }
    /// Whether the current phase can be cancelled.
    QBindable<bool> bindableIsCancellable() { return &m_isCancellable; }
    /// Whether the offered version is downloaded already.
    QBindable<bool> bindableIsDownloaded() { return &m_isDownloaded; }
    /// Why it failed, as sentences for the user; empty unless it did.
    QBindable<QString> bindableProblem() { return &m_problem; }

signals:
    void phaseChanged();
    void currentVersionChanged();
    void offeredVersionChanged();
    void notesChanged();
    void percentChanged();
    void isCancellableChanged();
    void isDownloadedChanged();
    void problemChanged();

    // Requests of the user.
    void installRequested();
    void cancelRequested();
    void retryRequested();
    void restartRequested();

private:
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdateSession, Phase, m_phase, Phase::Checking,
                                         &UpdateSession::phaseChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdateSession, QString, m_currentVersion,
                               &UpdateSession::currentVersionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdateSession, QString, m_offeredVersion,
                               &UpdateSession::offeredVersionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdateSession, QString, m_notes, &UpdateSession::notesChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdateSession, int, m_percent, -1,
                                         &UpdateSession::percentChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdateSession, bool, m_isCancellable, false,
                                         &UpdateSession::isCancellableChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(UpdateSession, bool, m_isDownloaded, false,
                                         &UpdateSession::isDownloadedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(UpdateSession, QString, m_problem, &UpdateSession::problemChanged)
};
