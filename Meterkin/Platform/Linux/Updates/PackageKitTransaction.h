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
    QString details; ///< when it failed: the service's text, of any length
};

/// One transaction of PackageKit, over its D-Bus interface org.freedesktop.PackageKit.Transaction
/// (PackageKit Reference Manual, freedesktop.org/software/PackageKit). Main thread only.
class PackageKitTransaction : public QObject {
    Q_OBJECT

public:
    /// The priority, and whether the service may ask the user for a password.
    enum class Manner {
        Background, ///< low priority; the user is not asked
        Attended, ///< the user waits, and is not asked
        Authorizing, ///< the user waits, and may be asked
    };
    /// What the transaction does with a listed package: the values of PkInfoEnum that are used
    /// here.
    enum class PackageInfo : uint { Blocked = 9, Removing = 13, Obsoleting = 15, Downgrading = 20 };

    /// A service that sends nothing for this long is queried; one that does not answer that in the
    /// same time counts as gone.
    static constexpr std::chrono::milliseconds Timeout{30'000};

    explicit PackageKitTransaction(BusConnection &bus, std::chrono::milliseconds timeout = Timeout,
                                   QObject *parent = nullptr);

    /// Calls `method` of a new transaction; finished() follows later. Once.
    void start(Manner manner, const QString &method, const QVariantList &arguments);

    /// Asks the service to stop, which it may refuse.
    void cancel();

    bool isCancellable() const { return m_isCancellable; }

signals:
    void packageListed(PackageKitTransaction::PackageInfo info, const PackageIdentifier &package);
    /// The release notes of an update, of any length and content.
    void notesListed(const QString &text);
    /// 0 to 99 percent, or -1 when unknown.
    void progressed(int percent);
    void cancellableChanged(bool isCancellable);
    /// The last signal. A receiver deletes the transaction by deleteLater() only.
    void finished(const PackageKitResult &result);

private slots:
    void handleSignal(const QDBusMessage &message);
    void handleProperties(const QDBusMessage &message);

private:
    void begin(const BusReply<QDBusObjectPath> &created, Manner manner, const QDBusMessage &work);
    QDBusMessage methodCall(const QString &interface, const QString &method) const;
    void checkAlive();
    void takeProperties(const QVariantMap &properties);
    void fail(const QDBusError &error);
    void finish(const PackageKitResult &result);

    BusConnection &m_bus;
    std::chrono::milliseconds m_timeout;
    QString m_path; ///< empty until the service has made it
    QString m_owner; ///< the service's unique name
    BusName m_service;
    QTimer m_silence;
    PackageKitResult m_result; ///< what went wrong so far
    bool m_isCancellable = false;
    bool m_hasEnded = false;
};
