#pragma once

#include "Platform/Linux/Bus/Handshake.h"
#include "Platform/Linux/Bus/Reply.h"
#include "Platform/Linux/Bus/RetryTimer.h"

#include <QDBusConnection>

#include <functional>
#include <optional>

struct BusTimeouts {
    std::chrono::milliseconds reply{10'000}; ///< to a call
    std::chrono::milliseconds handshake{5'000};
    std::chrono::milliseconds firstRetry{1'000}; ///< of connecting, doubled at each failure
    std::chrono::milliseconds longestRetry{5'000};
};

/// The session bus or the system bus, shared by everything that speaks D-Bus on it. It is opened in
/// the background, may be missing, vanish and return; it is never started by us. Main thread only.
class BusConnection : public QObject {
    Q_OBJECT

public:
    enum class Kind {
        Session,
        System,
    };
    template <typename Value> using Handler = std::function<void(const BusReply<Value> &reply)>;

    /// Where the bus listens; empty when there is none.
    static QString address(Kind kind);
    /// Keeps Qt's own connection from a session bus that accepts clients and never answers them: Qt
    /// would wait for it forever, before anything is shown. What in Qt needs a bus, such as the
    /// link to screen readers, does without one then. Call it before Qt starts; waits for the
    /// handshake.
    static void keepQtFromSilentBus();
    /// A call of that method of the bus itself.
    static QDBusMessage busCall(const QString &method);

    /// Begins to connect; connected() follows once the event loop runs.
    explicit BusConnection(Kind kind = Kind::Session, BusTimeouts timeouts = {},
                           QObject *parent = nullptr);
    ~BusConnection() override;

    /// Absent while there is no bus. Keep no copy beyond disconnected().
    const std::optional<QDBusConnection> &connection() const { return m_connection; }

    /// Calls `handler` with the reply or the error, which is logged, later and exactly once, unless
    /// `receiver` is gone by then. Without a bus that is an error. `timeout` replaces the usual
    /// one.
    template <typename Value>
    void call(const QDBusMessage &call, QObject *receiver, Handler<Value> handler,
              std::optional<std::chrono::milliseconds> timeout = std::nullopt)
    {
        sendCall(
            call, receiver,
            [call, handler = std::move(handler)](const QDBusMessage &message) {
                const BusReply<Value> reply(message);
                if (!reply.isValid())
                    logError(call, reply.error());
                handler(reply);
            },
            timeout);
    }
    /// For a call whose failure changes nothing; it is logged.
    void call(const QDBusMessage &call);

signals:
    void connected(const QDBusConnection &connection);
    /// What was registered or watched on the old connection is lost.
    void disconnected();

private slots:
    void handleLoss();

private:
    static void logError(const QDBusMessage &call, const QDBusError &error);

    void sendCall(const QDBusMessage &call, QObject *receiver,
                  std::function<void(const QDBusMessage &message)> handler,
                  std::optional<std::chrono::milliseconds> timeout);
    void open();
    void adopt(const QString &connectionName, BusState state);
    void logState(BusState state);

    Kind m_kind;
    BusTimeouts m_timeouts;
    std::optional<QDBusConnection> m_connection;
    RetryTimer m_retry;
    std::optional<BusState> m_loggedState;
};
