#include "Platform/Linux/Bus/Handshake.h"

#include <QDeadlineTimer>

#include <dbus/dbus.h>

#include <memory>

namespace {

struct Close {
    void operator()(DBusConnection *connection) const
    {
        dbus_connection_close(connection);
        dbus_connection_unref(connection);
    }
};

struct Unreference {
    void operator()(DBusMessage *message) const { dbus_message_unref(message); }
    void operator()(DBusPendingCall *call) const { dbus_pending_call_unref(call); }
};
using Message = std::unique_ptr<DBusMessage, Unreference>;
using PendingCall = std::unique_ptr<DBusPendingCall, Unreference>;

PendingCall sayHello(DBusConnection *connection)
{
    const Message hello(dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS,
                                                     DBUS_INTERFACE_DBUS, "Hello"));
    DBusPendingCall *call = nullptr;
    if (hello)
        dbus_connection_send_with_reply(connection, hello.get(), &call, DBUS_TIMEOUT_INFINITE);
    return PendingCall(call);
}

} // namespace

BusState performHandshake(const QString &address, std::chrono::milliseconds timeout)
{
    const std::unique_ptr<DBusConnection, Close> connection(
        dbus_connection_open_private(address.toUtf8().constData(), nullptr));
    const PendingCall call = connection ? sayHello(connection.get()) : nullptr;
    if (!call)
        return BusState::Absent;
    // Not with the library's blocking calls: they have no timeout until the bus has authenticated
    // the client.
    const QDeadlineTimer deadline(timeout);
    const auto isAnswered = [&call] { return dbus_pending_call_get_completed(call.get()) != 0; };
    for (bool isOpen = true; isOpen && !isAnswered();) {
        if (deadline.hasExpired())
            return BusState::Silent;
        const auto milliseconds = static_cast<int>(deadline.remainingTime());
        isOpen = dbus_connection_read_write_dispatch(connection.get(), milliseconds) != 0;
    }
    if (!isAnswered())
        return BusState::Absent;
    const Message reply(dbus_pending_call_steal_reply(call.get()));
    return dbus_message_get_type(reply.get()) == DBUS_MESSAGE_TYPE_METHOD_RETURN
        ? BusState::Answering
        : BusState::Absent;
}
