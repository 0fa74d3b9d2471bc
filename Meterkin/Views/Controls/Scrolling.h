#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// Where to scroll to. Main thread only.
class Scrolling : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// How far to scroll `content`, now scrolled by `contentY` in a view of that height, so that
    /// the item is in sight with a margin around it. As it is for an item elsewhere, or none.
    Q_INVOKABLE double revealing(QQuickItem *item, QQuickItem *content, double contentY,
                                 double height) const;
};
