#pragma once

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>

/// A D-Bus service with one object and what is below it, for as long as this exists.
class ScriptedService : public QDBusVirtualObject {
public:
    ScriptedService(const QDBusConnection &bus, const QString &name, const QString &path)
        : connection(bus)
        , m_name(name)
        , m_path(path)
    {
        connection.registerVirtualObject(path, this, QDBusConnection::SubPath);
        takeOver();
    }
    ~ScriptedService() override
    {
        connection.unregisterService(m_name);
        connection.unregisterObject(m_path, QDBusConnection::UnregisterTree);
    }

    /// Takes the name, also from another service.
    void takeOver()
    {
        connection.interface()->registerService(m_name,
                                                QDBusConnectionInterface::ReplaceExistingService,
                                                QDBusConnectionInterface::AllowReplacement);
    }
    static void emitSignal(const QDBusConnection &sender, const QString &path,
                           const QString &interface, const QString &name,
                           const QVariantList &arguments)
    {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
        signal.setArguments(arguments);
        sender.send(signal);
    }
    QString introspect(const QString &) const override { return QString(); }

    QDBusConnection connection;

private:
    const QString m_name;
    const QString m_path;
};
