#pragma once

#include <QObject>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <functional>

/// Finds out once whether an update feed lists any item. The network access lives on a thread of
/// its own and ends with the probe. Without a result when it is destroyed first. Main thread only.
class UpdateFeedProbe : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds Timeout{15'000};
    static constexpr qsizetype SizeLimit = 1024 * 1024; // bytes

    /// Calls `done` with the result, and destroys the probe then or with its receiver.
    static void start(const QUrl &feed, QObject *receiver,
                      std::function<void(bool listsItems)> done,
                      std::chrono::milliseconds timeout = Timeout);

    /// Starts the request to an HTTP or HTTPS address. The timeout is for all of it, redirections
    /// included.
    UpdateFeedProbe(const QUrl &feed, std::chrono::milliseconds timeout, QObject *parent);
    /// Ends the request; a thread that hangs is left behind after 100 ms.
    ~UpdateFeedProbe() override;

signals:
    /// Once, later. False also for a feed that cannot be fetched, is too large or is not UTF-8.
    void finished(bool listsItems);

private:
    QPointer<QThread> m_thread; ///< deletes itself when it ends
    QTimer m_timeout;
};
