#pragma once

#include "Platform/Linux/BusQuestion.h"

#include <QDBusServiceWatcher>

#include <memory>

/// Follows whether a service can be used on a bus, without starting it: many run only while they
/// have work. Main thread only.
class BusService : public QObject {
    Q_OBJECT

public:
    /// The bus outlives it.
    BusService(MessageBus &bus, QString name, QObject *parent = nullptr);

    /// The unique bus name of who provides it, empty for nobody; absent while that is unknown.
    const std::optional<QString> &owner() const { return m_owner; }
    /// Whether somebody provides it, or the bus could start it; false while that is unknown.
    bool isAvailable() const;
    /// Whether the bus has told all that there is to know.
    bool isKnown() const { return m_owner && m_isActivatable; }

    /// Has the bus start it: the owner changes, or `failed` is called later.
    void start(std::function<void()> failed);

signals:
    /// Something is known, or another than before.
    void changed();
    void availableChanged();

private slots:
    void askForActivatable();

private:
    void follow();
    void loseBus();
    bool takeOwner(const QDBusMessage &reply);
    bool takeActivatable(const QDBusMessage &reply);
    void tell();

    MessageBus &m_bus;
    QString m_name;
    std::unique_ptr<QDBusServiceWatcher> m_watcher; ///< of the present connection
    BusQuestion m_askForOwner;
    BusQuestion m_askForActivatable;
    std::optional<QString> m_owner;
    std::optional<bool> m_isActivatable;
    bool m_wasAvailable = false;
};
