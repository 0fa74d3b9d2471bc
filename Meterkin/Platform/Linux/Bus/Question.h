#pragma once

#include "Platform/Linux/Bus/Connection.h"
#include "Platform/Linux/Bus/RetryTimer.h"

#include <memory>

/// A call on a bus that is repeated until its answer is good enough. At most one is on its way,
/// however often it is asked. Ends with the connection. Main thread only.
class BusQuestion : public QObject {
public:
    /// Looks at the reply or the error; false has the call repeated, later after each failure.
    using Handler = std::function<bool(const QDBusMessage &reply)>;

    /// The bus outlives it.
    BusQuestion(BusConnection &bus, Handler handler, QObject *parent = nullptr);

    /// Calls now. While an answer is due, calls once more soon after it instead: what it tells may
    /// be from before.
    void ask(const QDBusMessage &call);
    /// The handler is not called before the next ask().
    void cancel();

private:
    void send();

    BusConnection &m_bus;
    Handler m_handler;
    QDBusMessage m_call;
    std::unique_ptr<QObject> m_pending; ///< receives the answer that is due
    bool m_isAskedAgain = false; ///< meanwhile
    RetryTimer m_retry;
};
