#include "Platform/Linux/Hotkey/PortalShortcut.h"

#include <QDBusMessage>
#include <QDBusMetaType>

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

QVariant shortcutsForBus(const QList<PortalShortcut> &shortcuts)
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    return QVariant::fromValue(shortcuts);
}

QList<PortalShortcut> listedShortcuts(const QDBusMessage &response)
{
    if (response.signature() != u"ua{sv}")
        return {};
    const auto results = qdbus_cast<QVariantMap>(response.arguments().at(1));
    const auto list = results.value(QStringLiteral("shortcuts")).value<QDBusArgument>();
    return list.currentSignature() == u"a(sa{sv})" ? qdbus_cast<QList<PortalShortcut>>(list)
                                                   : QList<PortalShortcut>();
}
