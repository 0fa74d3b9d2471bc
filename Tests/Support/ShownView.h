#pragma once

#include "Views/ViewEngine.h"

#include <QAccessible>
#include <QQuickWindow>
#include <QtTest>

/// A view in a window, used as a user would: items go by the names that a screen reader finds.
class ShownView {
public:
    ShownView(const QString &name, const QVariantMap &properties, QSize size = {})
        : view(engine.create(name, properties))
    {
        view->setParentItem(window.contentItem());
        if (!size.isEmpty())
            view->setSize(size);
        window.resize(view->size().toSize());
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    /// All names that can be found, in order.
    QStringList names() const
    {
        QStringList all;
        search(QAccessible::queryAccessibleInterface(&window),
               [&](const QAccessibleInterface &found) {
                   all << found.text(QAccessible::Name);
                   return false;
               });
        all.removeAll(QString());
        return all;
    }
    /// The item that can be seen by that name; null when there is none.
    QQuickItem *item(const QString &name) const
    {
        QAccessibleInterface *found = search(
            QAccessible::queryAccessibleInterface(&window), [&](const QAccessibleInterface &each) {
                return each.text(QAccessible::Name) == name && each.role() != Grouping;
            });
        return found != nullptr ? qobject_cast<QQuickItem *>(found->object()) : nullptr;
    }

    void click(const QQuickItem *place)
    {
        window.grabWindow(); // lays out what has changed
        const QPointF centre = place->mapToScene(place->boundingRect().center());
        QTest::mouseClick(&window, Qt::LeftButton, {}, centre.toPoint());
    }
    void click(const QStringList &names)
    {
        for (const QString &name : names)
            click(item(name));
    }
    void press(const QList<Qt::Key> &keys)
    {
        for (const Qt::Key key : keys)
            QTest::keyClick(&window, key);
    }

    ViewEngine engine; // outlives the view
    mutable QQuickWindow window;
    std::unique_ptr<QQuickItem> view;

private:
    static constexpr QAccessible::Role Grouping = QAccessible::Grouping;

    template <typename Test>
    static QAccessibleInterface *search(QAccessibleInterface *in, const Test &isWanted)
    {
        if (in->state().invisible)
            return nullptr;
        if (isWanted(*in))
            return in;
        QAccessibleInterface *found = nullptr;
        for (int i = 0; i < in->childCount() && found == nullptr; ++i)
            found = search(in->child(i), isWanted);
        return found;
    }
};
