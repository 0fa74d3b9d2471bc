#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

/// Scroll positions. Main thread only.
class Scrolling : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The contentY at which the item can be seen with a margin around it, in a view of that
    /// height. The present one for an item that is not in `content`, or null.
    Q_INVOKABLE double revealing(QQuickItem *item, QQuickItem *content, double contentY,
                                 double height) const;
};
