#include "Platform/Linux/Tray/Notifier/Menu.h"

#include <QDBusError>
#include <QGuiApplication>

#include <algorithm>

namespace {

constexpr int RootId = 0;
constexpr int FirstActionId = 1; // entry n of the table has this id + n
constexpr int FirstSeparatorId = 1001;
constexpr uint Revision = 1;

MenuLayout buildMenu()
{
    MenuLayout root{RootId, {{QStringLiteral("children-display"), QStringLiteral("submenu")}}, {}};
    for (int index = 0; const MenuEntry &entry : menuEntries) {
        if (entry.startsGroup) {
            root.children.append({FirstSeparatorId + index,
                                  {{QStringLiteral("type"), QStringLiteral("separator")}},
                                  {}});
        }
        root.children.append({FirstActionId + index,
                              {{QStringLiteral("label"), entry.text()},
                               {QStringLiteral("enabled"), true},
                               {QStringLiteral("visible"), true}},
                              {}});
        ++index;
    }
    return root;
}

/// No names mean all properties.
QVariantMap filtered(const QVariantMap &properties, const QStringList &names)
{
    if (names.isEmpty())
        return properties;
    QVariantMap kept;
    for (const QString &name : names) {
        if (properties.contains(name))
            kept.insert(name, properties.value(name));
    }
    return kept;
}

} // namespace

NotifierMenu::NotifierMenu(QObject *parent)
    : QObject(parent)
    , m_root(buildMenu())
{
    registerNotifierTypes();
}

QString NotifierMenu::textDirection() const
{
    return QGuiApplication::layoutDirection() == Qt::RightToLeft ? QStringLiteral("rtl")
                                                                 : QStringLiteral("ltr");
}

uint NotifierMenu::GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                             MenuLayout &layout)
{
    const MenuLayout *parent = require(parentId);
    if (parent == nullptr)
        return Revision;
    layout = {parent->id, filtered(parent->properties, propertyNames), {}};
    if (recursionDepth != 0) {
        for (const MenuLayout &child : parent->children)
            layout.children.append({child.id, filtered(child.properties, propertyNames), {}});
    }
    return Revision;
}

QList<MenuProperties> NotifierMenu::GetGroupProperties(const QList<int> &ids,
                                                       const QStringList &propertyNames)
{
    // No ids mean all entries. Each is returned once, even if its id is listed twice.
    QList<MenuProperties> group;
    const auto add = [&](const MenuLayout &entry) {
        if (ids.isEmpty() || ids.contains(entry.id))
            group.append({entry.id, filtered(entry.properties, propertyNames)});
    };
    add(m_root);
    std::ranges::for_each(m_root.children, add);
    return group;
}

QDBusVariant NotifierMenu::GetProperty(int id, const QString &name)
{
    const MenuLayout *entry = require(id);
    if (entry == nullptr)
        return {};
    if (!entry->properties.contains(name)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such property"));
        return {};
    }
    return QDBusVariant(entry->properties.value(name));
}

void NotifierMenu::Event(int id, const QString &event, const QDBusVariant &, uint)
{
    if (require(id) != nullptr)
        handle(id, event);
}

QList<int> NotifierMenu::EventGroup(const QList<MenuEvent> &events)
{
    QList<int> unknown;
    for (const MenuEvent &event : events) {
        if (find(event.id) != nullptr)
            handle(event.id, event.event);
        else
            unknown.append(event.id);
    }
    if (!events.isEmpty() && unknown.size() == events.size())
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such entries"));
    return unknown;
}

bool NotifierMenu::AboutToShow(int id)
{
    require(id);
    return false; // there is never anything new to fetch
}

QList<int> NotifierMenu::AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors)
{
    std::ranges::copy_if(ids, std::back_inserter(idErrors),
                         [this](int id) { return find(id) == nullptr; });
    return {};
}

const MenuLayout *NotifierMenu::find(int id) const
{
    if (id == RootId)
        return &m_root;
    const auto found = std::ranges::find(m_root.children, id, &MenuLayout::id);
    return found != m_root.children.end() ? &*found : nullptr;
}

const MenuLayout *NotifierMenu::require(int id)
{
    const MenuLayout *entry = find(id);
    if (entry == nullptr)
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such entry"));
    return entry;
}

void NotifierMenu::handle(int id, const QString &event)
{
    const int index = id - FirstActionId;
    if (event == u"clicked" && index >= 0 && index < static_cast<int>(menuEntries.size()))
        emit chosen(menuEntries[static_cast<std::size_t>(index)].action);
}
