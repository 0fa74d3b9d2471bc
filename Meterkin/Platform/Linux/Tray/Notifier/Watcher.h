#pragma once

#include "Platform/Linux/Bus/Name.h"

#include <optional>

/// What a panel makes of a notifier item.
enum class NotifierHostKind {
    Wide, ///< keeps the aspect ratio of a picture
    Label, ///< shows XAyatanaLabel beside the picture
    Square, ///< squeezes every picture into a square
};

/// Follows org.kde.StatusNotifierWatcher, through which notifier items find their panel. Main
/// thread only.
class NotifierWatcher : public QObject {
    Q_OBJECT

public:
    static const QString Path;
    static const QString Interface;

    /// The bus outlives the watcher.
    explicit NotifierWatcher(BusConnection &bus, QObject *parent = nullptr);

    /// Whether there is a panel that shows items, as far as its answers are in.
    bool hasHost() const { return m_hostRegistered && m_hostKind; }
    /// Square while that is unknown.
    NotifierHostKind hostKind() const { return m_hostKind.value_or(NotifierHostKind::Square); }
    /// The unique bus name behind the watcher; empty when there is none.
    const QString &owner() const { return m_owner; }

    /// The kind by the name of the panel's process, as the kernel shortens it.
    static NotifierHostKind kindOfProcess(QStringView processName);

signals:
    /// hasHost() has changed. A change of owner always passes through having no host.
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
    bool m_hadHost = false; ///< as last told
};
