#pragma once

#include <QtGlobal>

#include <string>

struct DBusConnection;
struct DBusMessage;

/// UDisks, over its D-Bus interface (storaged.org/doc/udisks2-api) on a connection of its own. Each
/// call blocks for 30 s at most and asks the user for no password. Any one thread.
///
/// Through libdbus: QtDBus serves all buses on one thread, where a system bus that hangs would
/// block the session bus and the end of the program.
class StorageService {
public:
    StorageService();
    ~StorageService();
    Q_DISABLE_COPY_MOVE(StorageService)

    /// False without a bus, and after a call that nobody answered.
    bool isThere() const { return m_connection != nullptr; }

    /// Unmounts the file system of the block device of that name, such as "loop0p1".
    bool unmount(const std::string &device);
    /// Detaches the loop device of that name from its file.
    bool deleteLoop(const std::string &device);

private:
    bool call(const std::string &device, const char *interface, const char *method);
    bool send(DBusMessage *message);
    void close();

    DBusConnection *m_connection = nullptr;
};
