#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QHash>
#include <QStringList>

#include <utility>

/// The package manager played by the test.
class ScriptedPackageKit : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Signal {
        QString name;
        QVariantList arguments;
    };
    enum class Ending { Finishes, Hangs, Vanishes, Refuses };
    struct Script {
        QList<Signal> told;
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
    /// Ends the transaction that was asked for last.
    void finishLast() { emitSignal(m_path, {QStringLiteral("Finished"), {1U, 5U}}); }
    void vanish() { m_connection.interface()->unregisterService(m_name); }

    static Signal package(uint info, const QString &id)
    {
        return {QStringLiteral("Package"), {info, id, QString()}};
    }
    static Signal error(uint code, const QString &details = {})
    {
        return {QStringLiteral("ErrorCode"), {code, details}};
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString method = message.member();
        if (method == u"CreateTransaction") {
            const QString path = QStringLiteral("/%1_scripted").arg(++m_transactions);
            m_connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
        } else if (method == u"GetAll") {
            if (answersProperties)
                m_connection.send(message.createReply(QVariantMap()));
        } else if (method == u"SetHints") {
            m_hints = message.arguments().value(0).toStringList();
            m_connection.send(message.createReply());
        } else {
            play(message);
        }
        return true;
    }
    QString introspect(const QString &) const override { return QString(); }

private:
    void crash()
    {
        const QString name = m_connection.name();
        m_connection = QDBusConnection(QString()); // it stays open while anybody holds it
        QDBusConnection::disconnectFromBus(name);
    }

    void play(const QDBusMessage &message)
    {
        QStringList words{message.member()};
        for (const QVariant &argument : message.arguments())
            words << (argument.typeId() == QMetaType::QStringList
                          ? argument.toStringList().join(u',')
                          : argument.toString());
        const QString call = words.join(u' ');
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
        for (const Signal &told : script.told)
            emitSignal(message.path(), told);
        if (script.ending == Ending::Vanishes)
            QMetaObject::invokeMethod(this, &ScriptedPackageKit::crash, Qt::QueuedConnection);
        else if (script.ending == Ending::Finishes && message.member() != u"Cancel")
            emitSignal(message.path(), {QStringLiteral("Finished"), {script.exit, 5U}});
    }

    void emitSignal(const QString &path, const Signal &told)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            path, QStringLiteral("org.freedesktop.PackageKit.Transaction"), told.name);
        signal.setArguments(told.arguments);
        m_connection.send(signal);
    }

    const QString m_name = QStringLiteral("org.freedesktop.PackageKit");
    QDBusConnection m_connection;
    int m_transactions = 0;
    QStringList m_hints;
    QString m_path;
};
