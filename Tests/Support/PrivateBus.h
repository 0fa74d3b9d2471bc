#pragma once

#include "Support/Files.h"

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

#include <sys/prctl.h>

/// A session bus for one test. It always listens at the same address, to which the environment
/// points for as long as this exists.
class PrivateBus {
public:
    /// Starts it.
    PrivateBus()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8());
        m_daemon.setStandardErrorFile(QProcess::nullDevice());
        // It ends with the test, even when that crashes.
        m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        start();
    }
    ~PrivateBus()
    {
        for (const QString &client : std::as_const(m_clients))
            QDBusConnection::disconnectFromBus(client);
        stop();
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }

    /// Returns once the bus accepts connections.
    void start()
    {
        QFile::remove(path("bus"));
        // Like a session bus, without the services that this machine has installed.
        write(path("bus.conf"),
              QString::fromLatin1(R"(<busconfig>
<type>session</type><listen>%1</listen><auth>EXTERNAL</auth><servicedir>%2</servicedir>
<policy context="default">
  <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy></busconfig>)")
                  .arg(address(), m_folder.path())
                  .toUtf8());
        m_daemon.startCommand(QStringLiteral("dbus-daemon --nofork --nopidfile --print-address")
                              + QStringLiteral(" --config-file=") + path("bus.conf"));
        if (!m_daemon.waitForReadyRead())
            qFatal("no session bus: %s", qPrintable(m_daemon.errorString()));
    }
    void stop()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    /// Accepts clients and answers nobody until resume().
    void suspend() { ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP); }
    void resume() { ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT); }

    QString address() const { return QStringLiteral("unix:path=") + path("bus"); }
    /// Lets the bus start a service by that command; the bus notices it by itself. It can start no
    /// other.
    void addService(const QString &name, const QString &command)
    {
        write(path(name.toUtf8() + ".service"),
              "[D-BUS Service]\nName=" + name.toUtf8() + "\nExec=" + command.toUtf8() + '\n');
    }
    /// Another client, disconnected with this.
    QDBusConnection connectClient()
    {
        static int count = 0;
        m_clients.append(QStringLiteral("client-%1").arg(++count));
        return QDBusConnection::connectToBus(address(), m_clients.last());
    }

private:
    QString path(const QByteArray &name) const
    {
        return m_folder.filePath(QString::fromLatin1(name));
    }

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QStringList m_clients;
};
