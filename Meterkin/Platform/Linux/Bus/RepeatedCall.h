#pragma once

#include "Platform/Linux/Bus/Connection.h"

#include <memory>

/// A BusConnection::call() that is repeated, ever more rarely, until somebody answers. However
/// often it is sent, only one is on its way at a time. It ends with the connection. Main thread
/// only.
class RepeatedCall : public QObject {
public:
    enum class RepeatAfter {
        Timeout, ///< the handler gets any other error
        AnyError, ///< the handler gets values only
    };
    template <typename Value> using Handler = BusConnection::Handler<Value>;

    /// The bus outlives it.
    explicit RepeatedCall(BusConnection &bus, QObject *parent = nullptr);

    /// Calls now. While an earlier call is unanswered, calls soon after its answer instead: that
    /// may describe how things were before.
    template <typename Value>
    void send(const QDBusMessage &call, Handler<Value> handler,
              RepeatAfter repeatAfter = RepeatAfter::Timeout)
    {
        m_attempt = [this, call, handler = std::move(handler), repeatAfter] {
            m_pending = std::make_unique<QObject>();
            m_bus.call<Value>(call, m_pending.get(), [=, this](const BusReply<Value> &reply) {
                const bool isRepeated =
                    repeatAfter == RepeatAfter::AnyError ? !reply.isValid() : reply.isTimeout();
                endAttempt(isRepeated);
                if (!isRepeated)
                    handler(reply);
            });
        };
        begin();
    }
    /// No handler is called before the next send().
    void cancel();

private:
    void begin();
    void attempt();
    void endAttempt(bool isRepeated);

    BusConnection &m_bus;
    std::function<void()> m_attempt;
    std::unique_ptr<QObject> m_pending; ///< receives the answer to the call on its way
    bool m_isSentAgain = false; ///< meanwhile
    RetryTimer m_retry;
};
