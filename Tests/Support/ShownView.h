#pragma once

#include "Views/ViewEngine.h"

#include <QQuickWindow>
#include <QtTest>

/// A view in a window, driven as a user would. Items go by their objectName.
class ShownView {
public:
    ShownView(const QString &name, const QVariantMap &properties, QSize size)
        : view(m_engine.create(name, properties))
    {
        view->setSize(size);
        view->setParentItem(window.contentItem());
        window.resize(size);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    QQuickItem *item(const QString &name) const { return view->findChild<QQuickItem *>(name); }

    void click(QQuickItem *place)
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

private:
    ViewEngine m_engine; // outlives the view

public:
    QQuickWindow window;
    std::unique_ptr<QQuickItem> view;
};
