#pragma once

#include "Platform/Linux/Bus/Name.h"
#include "Platform/Linux/Tray/Notifier/KnownHost.h"

#include <optional>

/// Follows org.kde.StatusNotifierWatcher, through which items find their panel: the "StatusNotifier
/// Item" specification of freedesktop.org. Main thread only.
class NotifierWatcher : public QObject {
    Q_OBJECT

public:
    static const QString Path;
    static const QString Interface;

    /// The bus outlives the watcher.
    explicit NotifierWatcher(BusConnection &bus, QObject *parent = nullptr);

    /// Whether there is a panel that shows items, and its kind is known.
    bool hasHost() const { return m_hostRegistered && m_host; }
    /// A plain square while that is unknown.
    NotifierHost host() const { return m_host.value_or(NotifierHost()); }
    /// The unique bus name behind the watcher; empty when there is none.
    const QString &owner() const { return m_owner; }

public slots:
    /// itemsRead() follows, unless the watcher does not tell.
    void readItems();

signals:
    /// hasHost() has changed. Between two owners there is always no host.
    void hostChanged();
    /// The items that the watcher has, by names of its own making.
    void itemsRead(const QStringList &items);
    /// One has gone; itemsRead() follows.
    void itemRemoved(const QString &item);

private slots:
    void query();
    void handleRemoval(const QString &item);

private:
    QDBusMessage propertyCall(const QString &name) const;
    void followSignals();
    void setOwner(const QString &owner);
    void update();

    BusConnection &m_bus;
    BusName m_name;
    RepeatedCall m_query; ///< for the kind, and then for the host
    RepeatedCall m_itemsQuery;
    QString m_owner;
    std::optional<NotifierHost> m_host;
    bool m_hostRegistered = false;
    bool m_hadHost = false; ///< when hostChanged() was last emitted
};
