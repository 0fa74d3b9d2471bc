#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

/// A session bus of the test's own. It always listens at the same address, which the environment
/// names for as long as the object lives.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();

    /// Returns once the bus takes connections.
    bool start();
    void stop();

    QString address() const;
    /// Another client of this bus; closed with the bus object.
    QDBusConnection connectClient();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_daemon;
    QStringList m_clients;
};
