#pragma once

#include "Platform/Linux/Storage/Descriptor.h"
#include "Platform/ProgramHost.h"

#include <QObject>

#include <memory>

class QSocketNotifier;

/// Sees to it that one instance runs a user and display. A lock in a folder of the user's own
/// decides who that is; a socket beside it only carries the news of further starts.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;

    /// Blocks for 5 s at most; to be called before the event loop, once. Where nothing can be
    /// locked it says so on standard error, and this instance counts as the first.
    ProgramHost::Claim claim();

signals:
    /// Somebody started the program once more.
    void startedAgain();

private:
    bool listen();
    void answer();

    Descriptor m_folder{-1};
    Descriptor m_lock{-1}; ///< held as long as it is open
    Descriptor m_socket{-1};
    std::unique_ptr<QSocketNotifier> m_notifier; ///< only while we listen
};
