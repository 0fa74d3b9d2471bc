#pragma once

#include "Platform/Linux/MessageBus.h"

#include <QDBusServiceWatcher>

#include <memory>

/// Follows whether PackageKit can be used, without starting it: it runs only while it has work.
/// Main thread only.
class PackageKitService : public QObject {
    Q_OBJECT

public:
    /// The bus, the system's, outlives it.
    explicit PackageKitService(MessageBus &bus, QObject *parent = nullptr);

    /// False while that is not known yet.
    bool isAvailable() const { return m_isAvailable; }

signals:
    void availableChanged();

private slots:
    void ask();

private:
    void follow();
    void setAvailable(bool available);

    MessageBus &m_bus;
    std::unique_ptr<QDBusServiceWatcher> m_owner;
    bool m_isAvailable = false;
};
