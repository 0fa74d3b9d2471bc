#pragma once

#include "Platform/Linux/Tray/Notifier/KnownHost.h"

/// What a panel finds one presentation of the item by: a bus name of its own, or only the path of
/// its object.
class NotifierAddress {
public:
    /// Another one at each time.
    explicit NotifierAddress(NotifierHostKind kind);

    /// As the item is registered with.
    const QString &text() const { return m_text; }
    bool isPath() const { return m_text.startsWith(u'/'); }
    QString objectPath() const;
    /// Whether a watcher's list has it, in any way that watchers write items. `owner` is the unique
    /// bus name of this program.
    bool isIn(const QStringList &items, const QString &owner) const;

private:
    QString m_text;
};
