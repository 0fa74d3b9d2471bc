#pragma once

#include "Platform/Linux/Bus/Name.h"

#include <optional>

/// How a panel shows an item.
enum class NotifierHostKind {
    Wide, ///< keeps the aspect ratio of a picture
    Label, ///< shows XAyatanaLabel beside the picture
    Square, ///< squeezes every picture into a square
    Titled, ///< the same, and shows the item's name instead of its tool tip
};

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
    bool hasHost() const { return m_hostRegistered && m_hostKind; }
    /// Square while that is unknown.
    NotifierHostKind hostKind() const { return m_hostKind.value_or(NotifierHostKind::Square); }
    /// The unique bus name behind the watcher; empty when there is none.
    const QString &owner() const { return m_owner; }

signals:
    /// hasHost() has changed. Between two owners there is always no host.
    void hostChanged();

private slots:
    void query();

private:
    void followSignals();
    void setOwner(const QString &owner);
    void update();

    BusConnection &m_bus;
    BusName m_name;
    RepeatedCall m_query; ///< for the kind, and then for the host
    QString m_owner;
    std::optional<NotifierHostKind> m_hostKind;
    bool m_hostRegistered = false;
    bool m_hadHost = false; ///< when hostChanged() was last emitted
};
