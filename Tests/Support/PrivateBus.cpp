#include "Support/PrivateBus.h"

#include <QFile>

#include <csignal>
#include <sys/prctl.h>

PrivateBus::PrivateBus()
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8());
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    // A test that crashes takes its bus along.
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    start();
}

PrivateBus::~PrivateBus()
{
    for (const QString &client : std::as_const(m_clients))
        QDBusConnection::disconnectFromBus(client);
    stop();
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void PrivateBus::start()
{
    QFile::remove(m_folder.filePath(QStringLiteral("bus")));
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--session"), QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address"),
                    QStringLiteral("--address=") + address()});
    if (!m_daemon.waitForReadyRead())
        qFatal("no session bus: %s", qPrintable(m_daemon.errorString()));
}

void PrivateBus::stop()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QString PrivateBus::address() const
{
    return QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus"));
}

QDBusConnection PrivateBus::connectClient()
{
    static int count = 0;
    m_clients.append(QStringLiteral("client-%1").arg(++count));
    return QDBusConnection::connectToBus(address(), m_clients.last());
}
