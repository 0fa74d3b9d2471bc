#pragma once

#include "Platform/Linux/Bus/Name.h"
#include "Platform/Linux/Updates/PackageIdentifier.h"
#include "Platform/Linux/Updates/PackageKitError.h"

#include <QDBusObjectPath>

/// How a transaction ended.
struct PackageKitResult {
    enum class Ending { Success, Cancelled, Failed };

    Ending ending = Ending::Failed;
    PackageKitError error = PackageKitError::Unknown; ///< when it failed
    QString details; ///< then, the service's own words; not bounded
};

/// One piece of work that PackageKit does for us. Main thread only.
class PackageKitTransaction : public QObject {
    Q_OBJECT

public:
    /// How much the service may bother the user and the machine.
    enum class Manner {
        Background, ///< nobody waits for it
        Attended, ///< the user waits, and is not to be asked for a password
        Authorizing, ///< the user waits, and may be asked
    };
    /// What a listed package is to the transaction, as far as it matters to us.
    enum class PackageInfo : uint { Blocked = 9, Removing = 13, Obsoleting = 15, Downgrading = 20 };

    /// The service that keeps silent for twice that time, alive or not, counts as gone. It may be
    /// at work without a word for longer, but then it answers when it is asked.
    static constexpr std::chrono::milliseconds Patience{30'000};

    explicit PackageKitTransaction(BusConnection &bus,
                                   std::chrono::milliseconds patience = Patience,
                                   QObject *parent = nullptr);

    /// Has the service do `method`, a method of its transactions; finished() follows later. Once.
    void start(Manner manner, const QString &method, const QVariantList &arguments);

    /// Asks the service to stop, unless it is done; it may refuse.
    void cancel();

    bool isCancellable() const { return m_isCancellable; }

signals:
    void packageListed(PackageKitTransaction::PackageInfo info, const PackageIdentifier &package);
    /// What is new in an update, of any length and content.
    void notesListed(const QString &text);
    /// 0 to 99, or -1 when it cannot be told.
    void progressed(int percent);
    void cancellableChanged(bool isCancellable);
    /// The last signal. The receiver may delete the transaction later, not now.
    void finished(const PackageKitResult &result);

private slots:
    void handleSignal(const QDBusMessage &message);
    void handleProperties(const QDBusMessage &message);

private:
    void begin(const BusReply<QDBusObjectPath> &created, Manner manner, const QDBusMessage &work);
    QDBusMessage methodCall(const QString &interface, const QString &method) const;
    void ask();
    void takeProperties(const QVariantMap &properties);
    void fail(const QDBusError &error);
    void finish(const PackageKitResult &result);

    BusConnection &m_bus;
    std::chrono::milliseconds m_patience;
    QString m_path; ///< empty until the service has made it
    QString m_owner; ///< the service's unique name
    BusName m_service;
    QTimer m_silence;
    PackageKitResult m_result; ///< what went wrong so far
    bool m_isCancellable = false;
    bool m_hasEnded = false;
};
