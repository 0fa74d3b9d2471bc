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

    /// What can be found, in order.
    QStringList names() const
    {
        QStringList all;
        for (const QAccessibleInterface *found : shown())
            all << found->text(QAccessible::Name);
        return all;
    }
    /// The item of that name, but not a group; null when there is none.
    QQuickItem *item(const QString &name) const
    {
        for (const QAccessibleInterface *found : shown())
            if (found->text(QAccessible::Name) == name && found->role() != QAccessible::Grouping)
                return qobject_cast<QQuickItem *>(found->object());
        return nullptr;
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
    QList<QAccessibleInterface *> shown(QAccessibleInterface *in = nullptr) const
    {
        if (in == nullptr)
            in = QAccessible::queryAccessibleInterface(&window);
        if (in->state().invisible)
            return {};
        QList<QAccessibleInterface *> all;
        if (!in->text(QAccessible::Name).isEmpty())
            all << in;
        for (int i = 0; i < in->childCount(); ++i)
            all << shown(in->child(i));
        return all;
    }
};
