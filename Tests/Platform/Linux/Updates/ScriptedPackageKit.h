#pragma once

#include "Support/ScriptedService.h"

#include <QDBusObjectPath>
#include <QHash>
#include <QStringList>

/// PackageKit, played by the test.
class ScriptedPackageKit : public ScriptedService {
public:
    inline static const QString Name = QStringLiteral("org.freedesktop.PackageKit");

    struct Signal {
        QString name;
        QVariantList arguments;
    };
    enum class Ending { Finishes, Hangs, Vanishes, Refuses };
    struct Script {
        QList<Signal> sent;
        uint exit = 1;
        Ending ending = Ending::Finishes;
    };

    QHash<QString, Script> scripts; ///< by the method, without its arguments or with them
    QStringList calls; ///< the methods of transactions, with their arguments
    QHash<QString, QStringList> hints; ///< by the call
    bool answersProperties = true;

    explicit ScriptedPackageKit(const QDBusConnection &bus)
        : ScriptedService(bus, Name, QStringLiteral("/"))
    {
    }

    void appear() { connection.registerService(Name); }
    void vanish() { connection.unregisterService(Name); }
    void finishLast() { emitSignal({QStringLiteral("Finished"), {1U, 5U}}); }

    static Signal package(uint info, const QString &id)
    {
        return {QStringLiteral("Package"), {info, id, QString()}};
    }
    static Script error(uint code, const QString &details = {})
    {
        return {{{QStringLiteral("ErrorCode"), {code, details}}}, 2};
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString method = message.member();
        QVariant answer;
        if (method == u"CreateTransaction")
            answer = QVariant::fromValue(QDBusObjectPath(u'/' + QString::number(++m_transactions)));
        else if (method == u"SetHints")
            m_hints = message.arguments().value(0).toStringList();
        else if (method == u"GetAll")
            answer = QVariantMap();
        else
            return play(message);
        if (method != u"GetAll" || answersProperties)
            connection.send(answer.isValid() ? message.createReply(answer) : message.createReply());
        return true;
    }

private:
    bool play(const QDBusMessage &message)
    {
        QString call = message.member();
        for (const QVariant &argument : message.arguments())
            call += u' '
                + (argument.typeId() == QMetaType::QStringList ? argument.toStringList().join(u',')
                                                               : argument.toString());
        calls << call;
        m_path = message.path();
        hints[call] = m_hints;
        const Script script = scripts.value(call, scripts.value(message.member()));
        if (script.ending == Ending::Refuses) {
            connection.send(message.createErrorReply(
                QStringLiteral("org.freedesktop.PackageKit.Transaction.RefusedByPolicy"),
                QStringLiteral("no")));
            return true;
        }
        connection.send(message.createReply());
        for (const Signal &each : script.sent)
            emitSignal(each);
        if (script.ending == Ending::Vanishes)
            vanish();
        else if (script.ending == Ending::Finishes && message.member() != u"Cancel")
            emitSignal({QStringLiteral("Finished"), {script.exit, 5U}});
        return true;
    }
    /// Of the last transaction.
    void emitSignal(const Signal &sent)
    {
        ScriptedService::emitSignal(connection, m_path,
                                    QStringLiteral("org.freedesktop.PackageKit.Transaction"),
                                    sent.name, sent.arguments);
    }

    int m_transactions = 0;
    QStringList m_hints;
    QString m_path;
};
