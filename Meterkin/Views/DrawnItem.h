#pragma once

#include <QQuickItem>

class QPainter;

/// An item that draws straight into its window, at the scale of the screen. Qt's painted items draw
/// into a picture of their own, which is stretched where their edges lie between two pixels. It
/// draws again whenever something behind it changes, so it must be cheap. Needs the software
/// renderer. Main thread only.
class DrawnItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit DrawnItem(QQuickItem *parent = nullptr);

    /// In the item's coordinates, antialiased.
    virtual void paint(QPainter *painter) = 0;

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
};
