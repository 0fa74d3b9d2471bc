#pragma once

#include "Platform/Linux/Storage/Descriptor.h"
#include "Platform/ProgramHost.h"

#include <QByteArray>
#include <QObject>

#include <memory>

class QDeadlineTimer;
class QSocketNotifier;

/// Lets one instance run for a user and display. A lock in a folder that only the user can write to
/// decides which one; through a socket beside it the instance is told of further starts, and by
/// which build.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;

    /// Blocks for 5 s at most; called once, before the event loop. Where nothing can be locked this
    /// instance counts as the first.
    ProgramHost::Claim claim();
    /// That of the first instance, which was told of this start; empty when it is our own.
    const QByteArray &otherBuild() const { return m_otherBuild; }

signals:
    /// The program was started once more.
    void startedAgain();
    /// Besides: it was that program, of another build.
    void otherBuildStarted(const QString &program);

private:
    bool tellFirst(const QDeadlineTimer &deadline);
    bool listen();
    void takeStart();
    void answer(const Descriptor &peer);

    Descriptor m_folder{-1};
    Descriptor m_lock{-1}; ///< held as long as it is open
    Descriptor m_socket{-1};
    std::unique_ptr<QSocketNotifier> m_notifier; ///< null unless it listens
    QByteArray m_otherBuild;
};
