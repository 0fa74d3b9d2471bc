#pragma once

#include <QDBusReply>

/// What a call on a bus was answered with: value(), or an error() where nobody answered in time,
/// the service refused, or the answer is of another type.
template <typename Value> class BusReply : public QDBusReply<Value> {
public:
    explicit BusReply(const QDBusMessage &message)
        : QDBusReply<Value>(message)
        , m_sender(message.service())
    {
    }

    /// Nobody answered in time: the service may hang, or only be slow.
    bool isTimeout() const { return this->error().type() == QDBusError::NoReply; }
    /// The unique bus name of the service, ":1.7"; any other text when no service has answered.
    const QString &sender() const { return m_sender; }

private:
    QString m_sender;
};
