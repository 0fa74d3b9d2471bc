#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

/// A session bus of the test's own. It always listens at the same address, which the environment
/// names from the making of the object to its end.
class PrivateBus {
public:
    /// Starts it.
    PrivateBus();
    ~PrivateBus();

    /// Returns once the bus takes connections.
    void start();
    void stop();
    /// Takes clients, and answers nobody until it goes on.
    void suspend() { ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP); }
    void resume() { ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT); }

    QString address() const;
    /// Lets the bus start a service by that command; the bus notices it by itself. No other service
    /// can be started by it.
    void addService(const QString &name, const QString &command);
    /// Another client of this bus; closed with the bus object.
    QDBusConnection connectClient();

private:
    QString servicesFolder() const;

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QStringList m_clients;
};
