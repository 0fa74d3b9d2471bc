#include "Support/ScriptedWatcher.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusReply>

#include <algorithm>

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");

} // namespace

ScriptedWatcher::ScriptedWatcher(const QDBusConnection &connection, Answer toProperty,
                                 Answer toRegister)
    : m_connection(connection)
    , m_toProperty(toProperty)
    , m_toRegister(toRegister)
{
    m_connection.registerVirtualObject(watcherPath, this);
    m_connection.connect(QString(), QString(), QStringLiteral("org.freedesktop.DBus"),
                         QStringLiteral("NameOwnerChanged"), this,
                         SLOT(recordName(QString, QString, QString)));
    m_connection.connect(QString(), QString(), itemInterface, QString(), this,
                         SLOT(recordSignal(QDBusMessage)));
    takeOver();
}

ScriptedWatcher::~ScriptedWatcher()
{
    m_connection.unregisterObject(watcherPath);
    if (m_connection.isConnected())
        m_connection.interface()->unregisterService(watcherName);
}

void ScriptedWatcher::takeOver()
{
    m_connection.interface()->registerService(watcherName,
                                              QDBusConnectionInterface::ReplaceExistingService,
                                              QDBusConnectionInterface::AllowReplacement);
}

void ScriptedWatcher::setHost(bool registered)
{
    m_host = registered;
    m_connection.send(
        QDBusMessage::createSignal(watcherPath, watcherName,
                                   registered ? QStringLiteral("StatusNotifierHostRegistered")
                                              : QStringLiteral("StatusNotifierHostUnregistered")));
}

QDBusMessage ScriptedWatcher::call(const QString &path, const QString &interface,
                                   const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_lastItem, path, interface, method);
    message.setArguments(arguments);
    return m_connection.call(message, QDBus::BlockWithGui, 5000);
}

QVariant ScriptedWatcher::property(const QString &name)
{
    const QDBusReply<QVariantMap> properties = call(
        QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("GetAll"), {itemInterface});
    return properties.value().value(name);
}

QStringList ScriptedWatcher::takeSignals()
{
    // Signals that were sent before this call have arrived with its answer.
    property(QStringLiteral("Id"));
    QCoreApplication::sendPostedEvents();
    return std::exchange(m_signals, {});
}

bool ScriptedWatcher::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    const bool registers = message.member() == u"RegisterStatusNotifierItem";
    ++(registers ? m_registrations : m_questions);
    const Answer answer = registers ? m_toRegister : m_toProperty;
    if (answer == Answer::Error) {
        m_connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
    } else if (answer == Answer::Wrong) {
        m_connection.send(message.createReply(QStringLiteral("true")));
    } else if (answer == Answer::Good && registers) {
        m_lastItem = message.arguments().value(0).toString();
        m_registered.insert(m_lastItem);
        m_connection.send(message.createReply());
    } else if (answer == Answer::Good) {
        m_connection.send(message.createReply(QVariant::fromValue(QDBusVariant(m_host))));
    }
    return true;
}

void ScriptedWatcher::recordName(const QString &name, const QString &, const QString &newOwner)
{
    if (!name.startsWith(itemInterface + u'-'))
        return;
    if (newOwner.isEmpty())
        m_names.remove(name);
    else
        m_names.insert(name);
    m_mostNames = std::max(m_mostNames, m_names.size());
}
