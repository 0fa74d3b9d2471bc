#pragma once

#include "Platform/Linux/Updates/PackageKitTransaction.h"

#include <QPointer>

#include <optional>

/// Finds, downloads and installs updates of the package that the running program belongs to,
/// through PackageKit. Main thread only.
class PackageUpdater : public QObject {
    Q_OBJECT

public:
    enum class Work { None, Check, Download, Install };
    using Manner = PackageKitTransaction::Manner;

    /// `program` is the program's file. The bus is the system's and outlives the updater.
    PackageUpdater(BusConnection &bus, const QString &program,
                   std::chrono::milliseconds timeout = PackageKitTransaction::Timeout,
                   QObject *parent = nullptr);

    Work work() const { return m_work; }
    /// The update that the last finished check has found.
    const std::optional<PackageIdentifier> &offer() const { return m_offer; }
    bool isCancellable() const;

    // Each ends running work and leads to one of the signals below; download() and install() do
    // nothing without an offer.
    void check(Manner manner);
    void download(Manner manner);
    /// The service may ask the user for a password.
    void install();

    /// Fetches the release notes of the offer: notesFetched() follows, or nothing. Other work ends
    /// it.
    void fetchNotes();

    /// Ends a check or a download at once; asks an installation to stop, which may be refused.
    void cancel();

signals:
    void workChanged();
    void checked();
    void downloaded();
    void installed();
    void cancelled();
    /// `problem` is the reason, as sentences for the user.
    void failed(const QString &problem);

    /// Plain text of a bounded length, not empty.
    void notesFetched(const QString &notes);
    /// 0 to 99 percent of a download or an installation; -1 when unknown.
    void progressed(int percent);
    void cancellableChanged();

private:
    using Step = void (PackageUpdater::*)();

    PackageKitTransaction *run(Manner manner, const QString &method, const QVariantList &arguments);
    /// Likewise; calls `next` after a success and ends the work otherwise.
    PackageKitTransaction *run(Manner manner, const QString &method, const QVariantList &arguments,
                               Step next);
    PackageKitTransaction *update(Manner manner, quint64 flags, Step next);
    void refresh();
    void listUpdates();
    void endCheck();
    void startDownload();
    void endDownload();
    void endInstallation();

    void drop();
    void setWork(Work work);
    void endWork(void (PackageUpdater::*signal)());
    void fail(const UpdateProblem &problem);

    BusConnection &m_bus;
    QString m_program;
    std::chrono::milliseconds m_timeout;
    Work m_work = Work::None;
    Manner m_manner = Manner::Background;
    QPointer<PackageKitTransaction> m_transaction;
    QTimer m_limit; ///< of work in the background, which nobody sees and cancels
    std::optional<PackageIdentifier> m_own; ///< as installed
    std::optional<PackageIdentifier> m_found; ///< by the check that runs
    std::optional<PackageIdentifier> m_offer;
    bool m_isOffline = false;
    QString m_lostPackage; ///< another one that the update would remove or replace
};
