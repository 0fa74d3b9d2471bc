#include "Platform/Linux/DiskImages/StorageService.h"

#include "Platform/Linux/Bus/Connection.h"
#include "Platform/Linux/Bus/Handshake.h"

#include <dbus/dbus.h>

#include <memory>
#include <string_view>

namespace {

constexpr int TimeoutMilliseconds = 30'000; // unmounting first writes what is cached

struct Unreference {
    void operator()(DBusMessage *message) const { dbus_message_unref(message); }
};
using Message = std::unique_ptr<DBusMessage, Unreference>;

/// Appends the option that no password is asked for.
bool appendOptions(DBusMessage *message)
{
    DBusMessageIter arguments, options;
    dbus_message_iter_init_append(message, &arguments);
    if (!dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "{sv}", &options))
        return false;
    DBusMessageIter entry, value;
    const char *key = "auth.no_user_interaction";
    const dbus_bool_t yes = TRUE;
    return dbus_message_iter_open_container(&options, DBUS_TYPE_DICT_ENTRY, nullptr, &entry)
        && dbus_message_iter_append_basic(&entry, DBUS_TYPE_STRING, &key)
        && dbus_message_iter_open_container(&entry, DBUS_TYPE_VARIANT, "b", &value)
        && dbus_message_iter_append_basic(&value, DBUS_TYPE_BOOLEAN, &yes)
        && dbus_message_iter_close_container(&entry, &value)
        && dbus_message_iter_close_container(&options, &entry)
        && dbus_message_iter_close_container(&arguments, &options);
}

/// Whether no service has answered.
bool isSilence(const DBusError &error)
{
    return dbus_error_has_name(&error, DBUS_ERROR_SERVICE_UNKNOWN)
        || dbus_error_has_name(&error, DBUS_ERROR_NAME_HAS_NO_OWNER)
        || dbus_error_has_name(&error, DBUS_ERROR_NO_REPLY)
        || dbus_error_has_name(&error, DBUS_ERROR_TIMEOUT)
        || dbus_error_has_name(&error, DBUS_ERROR_TIMED_OUT)
        || dbus_error_has_name(&error, DBUS_ERROR_DISCONNECTED)
        || std::string_view(error.name).starts_with("org.freedesktop.DBus.Error.Spawn.");
}

} // namespace

StorageService::StorageService()
{
    // Until the bus has let the client in, the library's calls know no time limit.
    const QString address = BusConnection::address(BusConnection::Kind::System);
    if (performHandshake(address, std::chrono::milliseconds(TimeoutMilliseconds))
        != BusState::Answering)
        return;
    m_connection = dbus_connection_open_private(address.toUtf8().constData(), nullptr);
    // Not the library's own handshake: it holds a lock that other connections need to close.
    const Message handshake(dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS,
                                                         DBUS_INTERFACE_DBUS, "Hello"));
    if (!isThere() || !handshake || !send(handshake.get()))
        close();
}

StorageService::~StorageService()
{
    close();
}

bool StorageService::unmount(const std::string &device)
{
    return call(device, "org.freedesktop.UDisks2.Filesystem", "Unmount");
}

bool StorageService::deleteLoop(const std::string &device)
{
    return call(device, "org.freedesktop.UDisks2.Loop", "Delete");
}

bool StorageService::call(const std::string &device, const char *interface, const char *method)
{
    if (!isThere())
        return false;
    const std::string path = "/org/freedesktop/UDisks2/block_devices/" + device;
    const Message message(
        dbus_message_new_method_call("org.freedesktop.UDisks2", path.c_str(), interface, method));
    if (!message || !appendOptions(message.get()))
        return false;
    return send(message.get());
}

bool StorageService::send(DBusMessage *message)
{
    DBusError error = DBUS_ERROR_INIT;
    const Message reply(dbus_connection_send_with_reply_and_block(m_connection, message,
                                                                  TimeoutMilliseconds, &error));
    // A service that has not answered once is not called again.
    if (dbus_error_is_set(&error) && isSilence(error))
        close();
    dbus_error_free(&error);
    return reply != nullptr;
}

void StorageService::close()
{
    if (m_connection == nullptr)
        return;
    dbus_connection_close(m_connection);
    dbus_connection_unref(m_connection);
    m_connection = nullptr;
}
