#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

/// A session bus for one test. It always listens at the same address, to which the environment
/// points for as long as this exists.
class PrivateBus {
public:
    /// Starts it.
    PrivateBus();
    ~PrivateBus();

    /// Returns once the bus accepts connections.
    void start();
    void stop();
    /// Accepts clients and answers nobody until resume().
    void suspend() { ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP); }
    void resume() { ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT); }

    QString address() const { return QStringLiteral("unix:path=") + path("bus"); }
    /// Lets the bus start a service by that command; the bus notices it by itself. It can start no
    /// other.
    void addService(const QString &name, const QString &command);
    /// Another client, disconnected with this.
    QDBusConnection connectClient();

private:
    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QStringList m_clients;
};
