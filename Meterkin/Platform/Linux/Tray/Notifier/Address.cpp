#include "Platform/Linux/Tray/Notifier/Address.h"

#include <QCoreApplication>

#include <algorithm>

NotifierAddress::NotifierAddress(NotifierHostKind kind)
{
    static int count = 0;
    ++count;
    // GNOME looks up who owns a name only after it has shown the item, and may lose it then. With a
    // path it knows the owner. The other panels give an item up only with its name.
    m_text = kind == NotifierHostKind::Label
        ? QStringLiteral("/org/meterkin/StatusNotifierItem/%1").arg(count)
        : QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
              .arg(QCoreApplication::applicationPid())
              .arg(count);
}

QString NotifierAddress::objectPath() const
{
    return isPath() ? m_text : QStringLiteral("/StatusNotifierItem");
}

bool NotifierAddress::isIn(const QStringList &items, const QString &owner) const
{
    // The name or its owner, and with most watchers the path behind it, with some after an "@".
    const auto isOf = [](const QString &item, const QString &name) {
        return item == name || item.startsWith(name + u'/') || item.startsWith(name + u'@');
    };
    return std::ranges::any_of(items, [&](const QString &item) {
        return isPath() ? isOf(item, owner) && item.endsWith(m_text)
                        : isOf(item, owner) || isOf(item, m_text);
    });
}
