#pragma once

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusVirtualObject>

using namespace Qt::StringLiterals;

/// A panel played by the test: the watcher of notifier items and their host in one.
class ScriptedWatcher : public QDBusVirtualObject {
    Q_OBJECT

public:
    enum class Answer { Good, Wrong, Error, None };

    /// Takes the watcher's name, also from another one.
    explicit ScriptedWatcher(const QDBusConnection &connection, Answer onProperty = Answer::Good,
                             Answer onRegister = Answer::Good)
        : toProperty(onProperty)
        , toRegister(onRegister)
        , m_connection(connection)
    {
        m_connection.registerVirtualObject(m_path, this);
        m_connection.connect(QString(), QString(), m_item, QString(), this,
                             SLOT(recordSignal(QDBusMessage)));
        takeOver();
    }
    ~ScriptedWatcher() override
    {
        m_connection.unregisterObject(m_path);
        if (m_connection.isConnected())
            m_connection.interface()->unregisterService(m_watcher);
    }

    Answer toProperty;
    Answer toRegister;
    int registrations = 0;
    int queries = 0; ///< of the property

    void takeOver()
    {
        m_connection.interface()->registerService(m_watcher,
                                                  QDBusConnectionInterface::ReplaceExistingService,
                                                  QDBusConnectionInterface::AllowReplacement);
    }
    void setHost(bool isRegistered)
    {
        m_hasHost = isRegistered;
        m_connection.send(
            QDBusMessage::createSignal(m_path, m_watcher, u"StatusNotifierHostRegistered"_s));
    }
    /// Items on the bus that registered here.
    QStringList items() const
    {
        QStringList names = m_connection.interface()->registeredServiceNames();
        names.removeIf([this](const QString &name) { return !m_registered.contains(name); });
        return names;
    }
    /// Calls the item last registered; the reply or the error.
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(m_lastItem, path, interface, method);
        message.setArguments(arguments);
        return m_connection.call(message, QDBus::BlockWithGui, 5'000);
    }
    QVariant property(const char *name)
    {
        const QDBusReply<QVariantMap> properties = call(
            u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s, {m_item});
        return properties.value().value(QString::fromLatin1(name));
    }
    /// The item's signals since the last time.
    QStringList takeSignals()
    {
        property("Id"); // signals that were sent before this call have arrived with its reply
        QCoreApplication::sendPostedEvents();
        return std::exchange(m_signals, {});
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const bool isRegistration = message.member() == u"RegisterStatusNotifierItem";
        ++(isRegistration ? registrations : queries);
        const Answer answer = isRegistration ? toRegister : toProperty;
        if (isRegistration && answer == Answer::Good) {
            m_lastItem = message.arguments().value(0).toString();
            m_registered.append(m_lastItem);
        }
        if (answer == Answer::Error)
            m_connection.send(message.createErrorReply(QDBusError::Failed, u"no"_s));
        else if (answer == Answer::Wrong)
            m_connection.send(message.createReply(u"true"_s));
        else if (answer == Answer::Good)
            m_connection.send(message.createReply(QVariant::fromValue(QDBusVariant(m_hasHost))));
        return true;
    }
    QString introspect(const QString &) const override { return QString(); }

private slots:
    void recordSignal(const QDBusMessage &message) { m_signals.append(message.member()); }

private:
    const QString m_watcher = u"org.kde.StatusNotifierWatcher"_s;
    const QString m_path = u"/StatusNotifierWatcher"_s;
    const QString m_item = u"org.kde.StatusNotifierItem"_s;
    QDBusConnection m_connection;
    bool m_hasHost = true;
    QString m_lastItem;
    QStringList m_registered;
    QStringList m_signals;
};
