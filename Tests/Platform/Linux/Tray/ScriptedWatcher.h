#pragma once

#include "Support/ScriptedService.h"

#include <QCoreApplication>
#include <QDBusReply>

using namespace Qt::StringLiterals;

/// A panel played by the test: the watcher of notifier items and their host in one.
class ScriptedWatcher : public ScriptedService {
    Q_OBJECT

public:
    enum class Answer { Good, Wrong, Error, None };

    explicit ScriptedWatcher(const QDBusConnection &bus)
        : ScriptedService(bus, u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s)
    {
        connection.connect(QString(), QString(), itemInterface, QString(), this,
                           SLOT(recordSignal(QDBusMessage)));
    }

    const QString itemInterface = u"org.kde.StatusNotifierItem"_s;
    Answer toProperty = Answer::Good;
    Answer toRegister = Answer::Good;
    int registrations = 0;
    int queries = 0; ///< of the property

    void setHost(bool isRegistered)
    {
        m_hasHost = isRegistered;
        emitSignal(connection, u"/StatusNotifierWatcher"_s, u"org.kde.StatusNotifierWatcher"_s,
                   u"StatusNotifierHostRegistered"_s, {});
    }
    /// Items on the bus that registered here.
    QStringList items() const
    {
        QStringList names = connection.interface()->registeredServiceNames();
        names.removeIf([this](const QString &name) { return !m_registered.contains(name); });
        return names;
    }
    /// Calls the item last registered; the reply or the error.
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {})
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(m_registered.last(), path, interface, method);
        message.setArguments(arguments);
        return connection.call(message, QDBus::BlockWithGui, 5'000);
    }
    QVariant property(const QString &name)
    {
        const QDBusReply<QVariantMap> properties =
            call(u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s,
                 {itemInterface});
        return properties.value().value(name);
    }
    /// The item's signals since the last time.
    QStringList takeSignals()
    {
        property({}); // signals that were sent before this call have arrived with its reply
        QCoreApplication::sendPostedEvents();
        return std::exchange(m_signals, {});
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const bool isRegistration = message.member() == u"RegisterStatusNotifierItem";
        ++(isRegistration ? registrations : queries);
        const Answer answer = isRegistration ? toRegister : toProperty;
        if (isRegistration && answer == Answer::Good)
            m_registered.append(message.arguments().value(0).toString());
        if (answer == Answer::Error)
            connection.send(message.createErrorReply(QDBusError::Failed, u"no"_s));
        else if (answer == Answer::Wrong)
            connection.send(message.createReply(u"true"_s));
        else if (answer == Answer::Good)
            connection.send(message.createReply(QVariant::fromValue(QDBusVariant(m_hasHost))));
        return true;
    }

private slots:
    void recordSignal(const QDBusMessage &message) { m_signals.append(message.member()); }

private:
    bool m_hasHost = true;
    QStringList m_registered;
    QStringList m_signals;
};
