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
    int queries = 0; ///< whether there is a host
    bool listsItems = true;
    int losses = 0; ///< how many of the next items it drops at once

    void setHost(bool isRegistered)
    {
        m_hasHost = isRegistered;
        emitSignal(connection, u"/StatusNotifierWatcher"_s, u"org.kde.StatusNotifierWatcher"_s,
                   u"StatusNotifierHostRegistered"_s, {});
    }
    /// Items that registered here and are on the bus, as "name/path".
    QStringList items() const
    {
        QStringList items = m_registered;
        const QStringList names = connection.interface()->registeredServiceNames();
        items.removeIf(
            [&](const QString &item) { return !names.contains(item.section(u'/', 0, 0)); });
        return items;
    }
    /// Calls the item last registered; the reply or the error.
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            m_registered.last().section(u'/', 0, 0), path, interface, method);
        message.setArguments(arguments);
        return connection.call(message, QDBus::BlockWithGui, 5'000);
    }
    QVariant property(const QString &name)
    {
        const QDBusReply<QVariantMap> properties =
            call(u'/' + m_registered.last().section(u'/', 1), u"org.freedesktop.DBus.Properties"_s,
                 u"GetAll"_s, {itemInterface});
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
        if (message.member() == u"RegisterStatusNotifierItem") {
            ++registrations;
            const QString service = message.arguments().value(0).toString();
            if (toRegister == Answer::Good)
                m_registered.append(service.startsWith(u'/') ? message.service() + service
                                                             : service + u"/StatusNotifierItem"_s);
            answer(message, toRegister, m_hasHost);
            if (losses > 0) {
                --losses;
                emitSignal(connection, message.path(), u"org.kde.StatusNotifierWatcher"_s,
                           u"StatusNotifierItemUnregistered"_s, {m_registered.takeLast()});
            }
        } else if (message.arguments().value(1) == u"RegisteredStatusNotifierItems"_s) {
            answer(message, Answer::Good, listsItems ? m_registered : QStringList());
        } else {
            ++queries;
            answer(message, toProperty, m_hasHost);
        }
        return true;
    }

private slots:
    void recordSignal(const QDBusMessage &message) { m_signals.append(message.member()); }

private:
    void answer(const QDBusMessage &message, Answer answer, const QVariant &value)
    {
        if (answer == Answer::Error)
            connection.send(message.createErrorReply(QDBusError::Failed, u"no"_s));
        else if (answer == Answer::Wrong)
            connection.send(message.createReply(u"true"_s));
        else if (answer == Answer::Good)
            connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
    }

    bool m_hasHost = true;
    QStringList m_registered;
    QStringList m_signals;
};
