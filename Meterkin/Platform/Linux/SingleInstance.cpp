#include "Platform/Linux/SingleInstance.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>

namespace {

constexpr int ConnectMilliseconds = 300;

/// A folder that belongs to this user alone; empty when there is none.
QString privateFolder()
{
    QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(runtime) && QDir(runtime).exists())
        return runtime;
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/meterkin");
    return QDir().mkpath(config) ? config : QString();
}

/// One a display: each has a panel of its own.
QString displayName()
{
    QString name = qEnvironmentVariable("DISPLAY", qEnvironmentVariable("WAYLAND_DISPLAY"));
    return name.replace(u'/', u'_');
}

} // namespace

SingleInstance::SingleInstance(QObject *parent)
    : QObject(parent)
{
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim()
{
    const QString folder = privateFolder();
    if (folder.isEmpty())
        return true; // better two instances than none
    const QString path = folder + QStringLiteral("/org.meterkin.Meterkin") + displayName();

    // Two starts at the same moment must not both find no one there.
    QLockFile lock(path + QStringLiteral(".lock"));
    lock.tryLock(ConnectMilliseconds);

    QLocalSocket other;
    other.connectToServer(path, QIODevice::WriteOnly);
    if (other.waitForConnected(ConnectMilliseconds)) {
        other.disconnectFromServer();
        return false;
    }
    QLocalServer::removeServer(path); // a socket left by an instance that was killed
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server.get(), &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server->nextPendingConnection())
            socket->deleteLater();
        emit startedAgain();
    });
    m_server->listen(path);
    return true;
}
