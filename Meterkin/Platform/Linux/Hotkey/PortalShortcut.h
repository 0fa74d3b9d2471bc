#pragma once

#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QVariantMap>

class QDBusMessage;

/// A shortcut as org.freedesktop.portal.GlobalShortcuts has it.
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut);

/// As a value for the bus, `a(sa{sv})`.
QVariant shortcutsForBus(const QList<PortalShortcut> &shortcuts);

/// Those that a response lists; none when it has any other form.
QList<PortalShortcut> listedShortcuts(const QDBusMessage &response);
