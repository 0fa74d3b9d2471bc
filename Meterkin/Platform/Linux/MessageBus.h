#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

/// One of the two buses, shared by everything that speaks D-Bus on it. It is opened in the
/// background, may be absent, and may go away and come back at any time; a bus is never started by
/// us. Main thread only.
class MessageBus : public QObject {
    Q_OBJECT

public:
    enum class Kind {
        Session,
        System,
    };

    static constexpr int TimeoutMilliseconds = 10'000;

    /// Begins to connect; connected() follows once the event loop runs.
    explicit MessageBus(Kind kind = Kind::Session, QObject *parent = nullptr);
    ~MessageBus() override;

    /// Absent while there is no bus. Keep no copy beyond disconnected().
    const std::optional<QDBusConnection> &connection() const { return m_connection; }

    /// Sends `call`; `handler` gets the reply or the error message, later and exactly once, unless
    /// `receiver` is gone by then. Without a bus the answer is an error, too.
    void call(const QDBusMessage &call, QObject *receiver,
              std::function<void(const QDBusMessage &reply)> handler,
              int timeoutMilliseconds = TimeoutMilliseconds);

signals:
    void connected(const QDBusConnection &connection);
    /// What was registered or watched on the old connection is lost.
    void disconnected();

private slots:
    void handleLoss();

private:
    void open();
    void adopt(const QString &name);
    void retryLater();

    Kind m_kind;
    std::optional<QDBusConnection> m_connection;
    QTimer m_retry;
    int m_retryMilliseconds;
};
