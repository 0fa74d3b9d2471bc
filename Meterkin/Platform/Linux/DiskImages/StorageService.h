#pragma once

#include <QtGlobal>

#include <string>

struct DBusConnection;
struct DBusMessage;

/// The system's storage service, asked on a connection of its own. Every call blocks, for a bounded
/// time; nothing is asked of the user. Any one thread.
///
/// Spoken to through the plain library: Qt's own layer serves all buses on one thread, where a
/// system bus that hangs would hold the session's bus up, and the program's end.
class StorageService {
public:
    StorageService();
    ~StorageService();
    Q_DISABLE_COPY_MOVE(StorageService)

    /// False from the first call on that nobody answers, and when there is no bus.
    bool isThere() const { return m_connection != nullptr; }

    /// Unmounts the file system of the block device of that name, "loop0p1".
    bool unmount(const std::string &device);
    /// Takes the loop device of that name from its file.
    bool deleteLoop(const std::string &device);

private:
    bool call(const std::string &device, const char *interface, const char *method);
    bool send(DBusMessage *message);
    void close();

    DBusConnection *m_connection = nullptr;
};
