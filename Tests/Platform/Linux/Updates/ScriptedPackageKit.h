#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QHash>
#include <QStringList>

/// PackageKit, played by the test.
class ScriptedPackageKit : public QDBusVirtualObject {
    Q_OBJECT

public:
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

    explicit ScriptedPackageKit(const QDBusConnection &connection)
        : m_connection(connection)
    {
        m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        appear();
    }
    ~ScriptedPackageKit() override { m_connection.unregisterObject(QStringLiteral("/")); }

    void appear() { m_connection.interface()->registerService(m_name); }
    void vanish() { m_connection.interface()->unregisterService(m_name); }
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
        if (method == u"SetHints")
            m_hints = message.arguments().value(0).toStringList();
        if (method == u"CreateTransaction")
            m_connection.send(message.createReply(QVariant::fromValue(
                QDBusObjectPath(QStringLiteral("/%1_scripted").arg(++m_transactions)))));
        else if (method == u"SetHints")
            m_connection.send(message.createReply());
        else if (method != u"GetAll")
            play(message);
        else if (answersProperties)
            m_connection.send(message.createReply(QVariantMap()));
        return true;
    }
    QString introspect(const QString &) const override { return QString(); }

private:
    void play(const QDBusMessage &message)
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
            m_connection.send(message.createErrorReply(
                QStringLiteral("org.freedesktop.PackageKit.Transaction.RefusedByPolicy"),
                QStringLiteral("no")));
            return;
        }
        m_connection.send(message.createReply());
        for (const Signal &each : script.sent)
            emitSignal(each);
        if (script.ending == Ending::Vanishes)
            QMetaObject::invokeMethod(this, &ScriptedPackageKit::crash, Qt::QueuedConnection);
        else if (script.ending == Ending::Finishes && message.member() != u"Cancel")
            emitSignal({QStringLiteral("Finished"), {script.exit, 5U}});
    }
    void crash()
    {
        const QString name = m_connection.name();
        m_connection = QDBusConnection(QString()); // or it would stay open
        QDBusConnection::disconnectFromBus(name);
    }
    /// Of the last transaction.
    void emitSignal(const Signal &sent)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            m_path, QStringLiteral("org.freedesktop.PackageKit.Transaction"), sent.name);
        signal.setArguments(sent.arguments);
        m_connection.send(signal);
    }

    const QString m_name = QStringLiteral("org.freedesktop.PackageKit");
    QDBusConnection m_connection;
    int m_transactions = 0;
    QStringList m_hints;
    QString m_path;
};
