#pragma once

#include "Platform/Linux/Storage/Descriptor.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <optional>

/// Notices that another program was installed over the running one, by whatever means. The kernel
/// tells of it, so waiting costs nothing. Main thread only.
class ReplacementWatch : public QObject {
    Q_OBJECT

public:
    /// An upgrade replaces the plugins at about the same time.
    static constexpr std::chrono::seconds Quiet{3};

    explicit ReplacementWatch(QObject *parent = nullptr);

    /// Whether another program lies there now. False where it was removed, or installed anew as it
    /// was.
    bool isReplaced() const;

signals:
    /// Once for each that was installed, when it has been left alone for a while.
    void replaced();

private:
    void read();
    void tell();

    QByteArray m_file; ///< where the program was started from
    Descriptor m_original; ///< its content, also when its name is another file's
    Descriptor m_events;
    std::optional<QSocketNotifier> m_notifier; ///< absent where the system does not tell
    QTimer m_quiet;
};
