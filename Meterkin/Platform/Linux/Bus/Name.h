#pragma once

#include "Platform/Linux/Bus/RepeatedCall.h"

#include <QDBusServiceWatcher>

/// Follows who owns a name on a bus, without starting a service. Main thread only.
class BusName : public QObject {
    Q_OBJECT

public:
    /// The bus outlives it.
    BusName(BusConnection &bus, QString name, QObject *parent = nullptr);

    /// The unique bus name of the owner, empty for nobody; absent while it is unknown, as without a
    /// bus.
    const std::optional<QString> &owner() const { return m_owner; }

signals:
    /// `previous` is what owner() was.
    void changed(const std::optional<QString> &previous);

protected:
    BusConnection &bus() { return m_bus; }
    const QString &name() const { return m_name; }

private:
    void follow();
    void setOwner(const std::optional<QString> &owner);

    BusConnection &m_bus;
    QString m_name;
    std::unique_ptr<QDBusServiceWatcher> m_watcher; ///< of the present connection
    RepeatedCall m_query;
    std::optional<QString> m_owner;
};
