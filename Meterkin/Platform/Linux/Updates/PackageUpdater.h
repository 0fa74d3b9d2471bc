#pragma once

#include "Platform/Linux/Updates/PackageKitTransaction.h"

#include <QPointer>

#include <optional>

/// Finds, downloads and installs updates of the one package that the running program came in,
/// step by step through PackageKit. Main thread only.
class PackageUpdater : public QObject {
    Q_OBJECT

public:
    enum class Work { None, Check, Download, Install };
    using Manner = PackageKitTransaction::Manner;

    /// `program` is the program's own file; the bus, the system's, outlives the updater.
    PackageUpdater(BusConnection &bus, const QString &program,
                   std::chrono::milliseconds patience = PackageKitTransaction::Patience,
                   QObject *parent = nullptr);

    Work work() const { return m_work; }
    /// The update that the last finished check has found.
    const std::optional<PackageIdentifier> &offer() const { return m_offer; }
    bool isCancellable() const;

    // Each gives up what is running and ends in one of the signals below; download() and install()
    // do nothing without an offer.
    void check(Manner manner);
    void download(Manner manner);
    /// The service may ask the user for a password.
    void install();

    /// Asks for what is new in the offer: notesFetched() follows, or nothing. Any other work ends
    /// it.
    void fetchNotes();

    /// Gives up a check or a download at once; asks an installation to stop, which may not be
    /// possible.
    void cancel();

signals:
    void workChanged();
    void checked();
    void downloaded();
    void installed();
    void cancelled();
    /// The reason, as sentences for the user.
    void failed(const QString &problem);

    /// Plain text of a bounded length, not empty.
    void notesFetched(const QString &notes);
    /// 0 to 99 of a download or an installation; -1 when it cannot be told.
    void progressed(int percent);
    void cancellableChanged();

private:
    using Step = void (PackageUpdater::*)();

    PackageKitTransaction *run(Manner manner, const QString &method, const QVariantList &arguments);
    /// Likewise; goes on with `next` when it succeeds and ends the work when not.
    PackageKitTransaction *run(Manner manner, const QString &method, const QVariantList &arguments,
                               Step next);
    PackageKitTransaction *update(Manner manner, quint64 flags, Step next);
    void refresh();
    void listUpdates();
    void endCheck();
    void reallyDownload();
    void endDownload();
    void endInstallation();

    void drop();
    void setWork(Work work);
    void endWork(void (PackageUpdater::*signal)());
    void fail(const QString &problem);

    BusConnection &m_bus;
    QString m_program;
    std::chrono::milliseconds m_patience;
    Work m_work = Work::None;
    Manner m_manner = Manner::Background;
    QPointer<PackageKitTransaction> m_transaction;
    QTimer m_limit; ///< nobody is there to give up what goes on for ever in the background
    std::optional<PackageIdentifier> m_own; ///< as installed
    std::optional<PackageIdentifier> m_found; ///< by the running check
    std::optional<PackageIdentifier> m_offer;
    bool m_isOffline = false;
    QString m_sacrifice; ///< another package that would have to go
};
