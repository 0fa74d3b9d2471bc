#include "Support/PrivateBus.h"

#include <QDir>
#include <QFile>

#include <sys/prctl.h>

namespace {

// Like a session bus, without the services that this machine has installed.
constexpr const char *Configuration = R"(<busconfig>
<type>session</type>
<listen>%1</listen>
<auth>EXTERNAL</auth>
<servicedir>%2</servicedir>
<policy context="default">
  <allow send_destination="*" eavesdrop="true"/>
  <allow eavesdrop="true"/>
  <allow own="*"/>
</policy>
</busconfig>
)";

bool write(const QString &path, const QString &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
}

} // namespace

PrivateBus::PrivateBus()
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", address().toUtf8());
    QDir(m_folder.path()).mkdir(QStringLiteral("services"));
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    // It ends with the test, even when that crashes.
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
    QFile::remove(path("bus"));
    const QString configuration = path("bus.conf");
    write(configuration, QString::fromLatin1(Configuration).arg(address(), path("services")));
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=") + configuration, QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    if (!m_daemon.waitForReadyRead())
        qFatal("no session bus: %s", qPrintable(m_daemon.errorString()));
}

void PrivateBus::stop()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

void PrivateBus::addService(const QString &name, const QString &command)
{
    write(path("services") + u'/' + name + QStringLiteral(".service"),
          QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(name, command));
}

QDBusConnection PrivateBus::connectClient()
{
    static int count = 0;
    m_clients.append(QStringLiteral("client-%1").arg(++count));
    return QDBusConnection::connectToBus(address(), m_clients.last());
}
