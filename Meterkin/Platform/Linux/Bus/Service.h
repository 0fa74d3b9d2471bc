#pragma once

#include "Platform/Linux/Bus/Name.h"

/// Follows whether a service can be used, without starting it: many run only while they have work.
/// Main thread only.
class BusService : public BusName {
    Q_OBJECT

public:
    /// The bus outlives it.
    BusService(BusConnection &bus, const QString &name, QObject *parent = nullptr);

    /// Whether it runs, or the bus could start it; false while that is unknown.
    bool isAvailable() const;
    /// Whether isAvailable() is more than a guess.
    bool isKnown() const { return owner() && m_isActivatable; }

    /// Makes the bus start it: the owner changes, or `failed` is called later.
    void start(std::function<void()> failed);

signals:
    void availableChanged();

private slots:
    void queryActivatable();

private:
    void follow();
    void updateAvailable();

    RepeatedCall m_query; ///< for the services that the bus can start
    std::optional<bool> m_isActivatable;
    bool m_wasAvailable = false;
};
