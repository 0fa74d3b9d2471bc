#pragma once

#include <QObject>
#include <QPointer>
#include <QThread>
#include <QTimer>
#include <QUrl>

#include <chrono>

/// Asks an update feed once whether it lists any item. All that it takes to reach the network is
/// made with it, on a thread of its own, and gone with it. Destroyed before the answer it gives
/// none. Main thread only.
class UpdateFeedProbe : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds TimeLimit{15'000};
    static constexpr qsizetype MostBytes = 1024 * 1024;

    /// Whether a feed can be asked for at this address: over HTTP or HTTPS, and from a host.
    static bool canAsk(const QUrl &feed);

    /// Begins to ask. The limit is that of the whole exchange, redirections included.
    explicit UpdateFeedProbe(const QUrl &feed, std::chrono::milliseconds timeLimit = TimeLimit,
                             QObject *parent = nullptr);
    /// Gives up; what hangs is left to itself after a moment.
    ~UpdateFeedProbe() override;

signals:
    /// Once, later. False also for whatever could not be fetched, is too large or is no text.
    void answered(bool listsItems);

private:
    void giveUp();

    QPointer<QThread> m_thread; ///< deletes itself when it has finished
    QTimer m_timeLimit;
};
