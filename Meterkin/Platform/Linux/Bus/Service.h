#pragma once

#include "Platform/Linux/Bus/Name.h"

/// Follows whether a service can be used on a bus, without starting it: many run only while they
/// have work. Main thread only.
class BusService : public BusName {
    Q_OBJECT

public:
    /// The bus outlives it.
    BusService(BusConnection &bus, const QString &name, QObject *parent = nullptr);

    /// Whether somebody provides it, or the bus could start it; false while that is unknown.
    bool isAvailable() const;
    /// Whether the bus has told all that there is to know.
    bool isKnown() const { return owner() && m_isActivatable; }

    /// Has the bus start it: the owner changes, or `failed` is called later.
    void start(std::function<void()> failed);

signals:
    void availableChanged();

private slots:
    void askForActivatable();

private:
    void follow();
    void tellAvailable();

    BusQuestion m_question; ///< for what can be started
    std::optional<bool> m_isActivatable;
    bool m_wasAvailable = false;
};
