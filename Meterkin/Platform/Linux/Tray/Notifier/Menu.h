#pragma once

#include "Platform/Linux/Tray/MenuEntries.h"
#include "Platform/Linux/Tray/Notifier/Types.h"

#include <QDBusContext>
#include <QObject>

/// The item's menu on the bus, for panels that show it by themselves: properties and slots are
/// those of com.canonical.dbusmenu. It never changes. Main thread only.
class NotifierMenu : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    explicit NotifierMenu(QObject *parent = nullptr);

    uint version() const { return 3; }
    QString status() const { return QStringLiteral("normal"); }
    QString textDirection() const;
    QStringList iconThemePath() const { return {}; }

    // NOLINTBEGIN(readability-identifier-naming): names on the bus
public slots:
    uint GetLayout(int parentId, int recursionDepth, const QStringList &propertyNames,
                   MenuLayout &layout);
    QList<MenuProperties> GetGroupProperties(const QList<int> &ids,
                                             const QStringList &propertyNames);
    QDBusVariant GetProperty(int id, const QString &name);
    void Event(int id, const QString &event, const QDBusVariant &data, uint timestamp);
    QList<int> EventGroup(const QList<MenuEvent> &events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int> &ids, QList<int> &idErrors);
    // NOLINTEND(readability-identifier-naming)

signals:
    void chosen(MenuAction action);

private:
    /// Null when there is no such entry.
    const MenuLayout *find(int id) const;
    /// Likewise; replies with an error when there is none.
    const MenuLayout *require(int id);
    void handle(int id, const QString &event);

    MenuLayout m_root;
};
