#include "Platform/Linux/Bus/Connection.h"

#include "Platform/Linux/Bus/Handshake.h"

#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QPointer>
#include <QThread>

#include <utility>

namespace {

QString newConnectionName()
{
    static int count = 0;
    return QStringLiteral("meterkin-%1").arg(++count);
}

} // namespace

QString BusConnection::address(Kind kind)
{
    if (kind == Kind::System)
        return qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS",
                                    QStringLiteral("unix:path=/var/run/dbus/system_bus_socket"));
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        // "autolaunch:" would start a bus that nobody else in the session talks to.
        return address.contains(u"autolaunch:") ? QString() : address;
    }
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = folder + QStringLiteral("/bus");
    if (folder.isEmpty() || !QFileInfo::exists(socket))
        return QString();
    return QStringLiteral("unix:path=") + socket;
}

QDBusMessage BusConnection::busCall(const QString &method)
{
    const QString name = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/DBus"), name,
                                          method);
}

bool BusConnection::isTimeout(const QDBusMessage &reply)
{
    return reply.errorName() == QDBusError::errorString(QDBusError::NoReply);
}

BusConnection::BusConnection(Kind kind, BusPatience patience, QObject *parent)
    : QObject(parent)
    , m_kind(kind)
    , m_patience(patience)
    , m_retry(std::chrono::milliseconds(patience.firstRetry),
              std::chrono::milliseconds(patience.longestRetry))
{
    m_retry.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_retry, &QTimer::timeout, this, &BusConnection::open);
    open();
}

BusConnection::~BusConnection()
{
    if (m_connection)
        QDBusConnection::disconnectFromBus(m_connection->name());
}

void BusConnection::call(const QDBusMessage &call, QObject *receiver,
                      std::function<void(const QDBusMessage &reply)> handler,
                      std::optional<int> patience)
{
    const QDBusPendingCall pending = m_connection
        ? m_connection->asyncCall(call, patience.value_or(m_patience.answer))
        : QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, QString()));
    // Not owned by the receiver, which the handler may destroy.
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
            [watcher, handler = std::move(handler)] { handler(watcher->reply()); });
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
}

void BusConnection::open()
{
    const QString address = BusConnection::address(m_kind);
    if (address.isEmpty()) {
        m_retry.start(m_patience.longestRetry);
        return;
    }
    // Connecting waits for the bus, for ever if need be, and with it all connections of Qt,
    // which one thread serves. So none is made to a bus that does not answer. Nobody waits for this
    // thread, not even the program's end.
    const QString name = newConnectionName();
    QThread *worker = QThread::create([address, name, patience = m_patience.greeting] {
        if (greetBus(address, patience) == BusState::Answering)
            QDBusConnection::connectToBus(address, name);
    });
    connect(worker, &QThread::finished, worker, [bus = QPointer(this), name] {
        if (bus)
            bus->adopt(name);
        else
            QDBusConnection::disconnectFromBus(name);
    });
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}

void BusConnection::adopt(const QString &name)
{
    QDBusConnection connection(name);
    const bool followed =
        connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                           QStringLiteral("org.freedesktop.DBus.Local"),
                           QStringLiteral("Disconnected"), this, SLOT(handleLoss()));
    if (!followed || !connection.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        m_retry.retry();
        return;
    }
    m_retry.reset();
    m_connection = connection;
    emit connected(connection);
}

void BusConnection::handleLoss()
{
    if (!m_connection)
        return;
    const QString name = m_connection->name();
    m_connection.reset();
    emit disconnected();
    QDBusConnection::disconnectFromBus(name);
    m_retry.retry();
}
