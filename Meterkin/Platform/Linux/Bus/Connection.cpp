#include "Platform/Linux/Bus/Connection.h"

#include "Platform/Log.h"

#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QPointer>
#include <QThread>

#include <utility>

namespace {

constexpr const char *AddressVariable = "DBUS_SESSION_BUS_ADDRESS";

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
    const QString address = qEnvironmentVariable(AddressVariable);
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

void BusConnection::keepQtFromSilentBus()
{
    const QString address = BusConnection::address(Kind::Session);
    if (address.isEmpty() || performHandshake(address, BusTimeouts().handshake) != BusState::Silent)
        return;
    // Qt reads the address from the environment, once. An address of an unknown kind, because
    // without any it would look for a bus by itself. The programs that we start inherit the
    // environment as it was.
    const bool isSet = qEnvironmentVariableIsSet(AddressVariable);
    const QByteArray original = qgetenv(AddressVariable);
    qputenv(AddressVariable, QByteArrayLiteral("silent:"));
    static_cast<void>(QDBusConnection::sessionBus());
    if (isSet)
        qputenv(AddressVariable, original);
    else
        qunsetenv(AddressVariable);
}

QDBusMessage BusConnection::busCall(const QString &method)
{
    const QString name = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/DBus"), name,
                                          method);
}

BusConnection::BusConnection(Kind kind, BusTimeouts timeouts, QObject *parent)
    : QObject(parent)
    , m_kind(kind)
    , m_timeouts(timeouts)
    , m_retry(timeouts.firstRetry, timeouts.longestRetry)
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

void BusConnection::call(const QDBusMessage &call)
{
    this->call<void>(call, this, [](const BusReply<void> &) {});
}

void BusConnection::sendCall(const QDBusMessage &call, QObject *receiver,
                             std::function<void(const QDBusMessage &message)> handler,
                             std::optional<std::chrono::milliseconds> timeout)
{
    const auto milliseconds = static_cast<int>(timeout.value_or(m_timeouts.reply).count());
    const QDBusPendingCall pending = m_connection
        ? m_connection->asyncCall(call, milliseconds)
        : QDBusPendingCall::fromError(
            QDBusError(QDBusError::Disconnected, QStringLiteral("there is no bus")));
    // Not owned by the receiver, which the handler may destroy.
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
            [watcher, handler = std::move(handler)] { handler(watcher->reply()); });
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
}

void BusConnection::logError(const QDBusMessage &call, const QDBusError &error)
{
    if (error.name() == u"org.freedesktop.DBus.Error.NameHasNoOwner")
        return; // no failure, but the answer to a query
    qCDebug(logBus, "%s of %s: %s: %s", qUtf8Printable(call.member()),
            qUtf8Printable(call.service()), qUtf8Printable(error.name()),
            qUtf8Printable(error.message()));
}

void BusConnection::open()
{
    const QString address = BusConnection::address(m_kind);
    if (address.isEmpty()) {
        logState(BusState::Absent);
        m_retry.start(m_timeouts.longestRetry);
        return;
    }
    // Connecting to a bus that does not answer would never end, and would hold up all connections
    // of Qt, which one thread serves. So the handshake comes first, on a thread of its own. Nobody
    // waits for that thread, not even the program's end.
    const QString connectionName = newConnectionName();
    const auto state = std::make_shared<BusState>(BusState::Absent);
    QThread *worker =
        QThread::create([address, connectionName, state, timeout = m_timeouts.handshake] {
            *state = performHandshake(address, timeout);
            if (*state == BusState::Answering)
                QDBusConnection::connectToBus(address, connectionName);
        });
    connect(worker, &QThread::finished, worker, [bus = QPointer(this), connectionName, state] {
        if (bus)
            bus->adopt(connectionName, *state);
        else
            QDBusConnection::disconnectFromBus(connectionName);
    });
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}

void BusConnection::adopt(const QString &connectionName, BusState state)
{
    QDBusConnection connection(connectionName);
    const bool isFollowed =
        connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                           QStringLiteral("org.freedesktop.DBus.Local"),
                           QStringLiteral("Disconnected"), this, SLOT(handleLoss()));
    if (!isFollowed || !connection.isConnected()) {
        logState(state == BusState::Silent ? state : BusState::Absent);
        QDBusConnection::disconnectFromBus(connectionName);
        m_retry.retry();
        return;
    }
    logState(BusState::Answering);
    m_retry.reset();
    m_connection = connection;
    emit connected(connection);
}

void BusConnection::handleLoss()
{
    if (!m_connection)
        return;
    logState(BusState::Absent);
    const QString connectionName = m_connection->name();
    m_connection.reset();
    emit disconnected();
    QDBusConnection::disconnectFromBus(connectionName);
    m_retry.retry();
}

void BusConnection::logState(BusState state)
{
    if (std::exchange(m_loggedState, state) == state)
        return;
    const char *name = m_kind == Kind::Session ? "session" : "system";
    if (state == BusState::Silent)
        qCWarning(logBus, "The %s bus accepts clients and does not answer: going on without it",
                  name);
    else
        qCDebug(logBus, "The %s bus is %s", name,
                state == BusState::Answering ? "connected" : "missing");
}
