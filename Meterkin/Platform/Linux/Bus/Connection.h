#pragma once

#include "Platform/Linux/Bus/RetryTimer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>
#include <optional>

/// How long to wait, in milliseconds.
struct BusPatience {
    int answer = 10'000; ///< for that to a call
    int greeting = 5'000; ///< for that to the first call
    int firstRetry = 1'000; ///< until connecting is tried again, doubled at each failure
    int longestRetry = 5'000;
};

/// One of the two buses, shared by everything that speaks D-Bus on it. It is opened in the
/// background, may be absent, and may go away and come back at any time; a bus is never started by
/// us. Main thread only.
class BusConnection : public QObject {
    Q_OBJECT

public:
    enum class Kind {
        Session,
        System,
    };

    /// Where the bus listens; empty when there is none.
    static QString address(Kind kind);
    /// A call of that method of the bus itself.
    static QDBusMessage busCall(const QString &method);
    /// Whether nobody has answered in time; an answer may still be had later.
    static bool isTimeout(const QDBusMessage &reply);

    /// Begins to connect; connected() follows once the event loop runs.
    explicit BusConnection(Kind kind = Kind::Session, BusPatience patience = {},
                        QObject *parent = nullptr);
    ~BusConnection() override;

    /// Absent while there is no bus. Keep no copy beyond disconnected().
    const std::optional<QDBusConnection> &connection() const { return m_connection; }

    /// Sends `call`; `handler` gets the reply or the error message, later and exactly once, unless
    /// `receiver` is gone by then. Without a bus the answer is an error, too. The usual patience
    /// can be replaced by one in milliseconds.
    void call(const QDBusMessage &call, QObject *receiver,
              std::function<void(const QDBusMessage &reply)> handler,
              std::optional<int> patience = std::nullopt);

signals:
    void connected(const QDBusConnection &connection);
    /// What was registered or watched on the old connection is lost.
    void disconnected();

private slots:
    void handleLoss();

private:
    void open();
    void adopt(const QString &name);

    Kind m_kind;
    BusPatience m_patience;
    std::optional<QDBusConnection> m_connection;
    RetryTimer m_retry;
};
