#pragma once

#include "Views/DrawnItem.h"

#include <QColor>
#include <QList>
#include <QPointF>
#include <QProperty>
#include <QSizeF>

/// The points of a series in a chart of that size, y downwards: the lowest value 2 above the lower
/// edge, the highest 2 below the upper one. Fewer than two values have no points; a flat series
/// lies on the line of the lowest.
QList<QPointF> sparklinePoints(const QList<double> &data, QSizeF size);

/// A metric's recent history as a line over a faint area that fills the item. Main thread
/// only.
class SparklineView : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<double> data READ data WRITE setData NOTIFY dataChanged FINAL)
    Q_PROPERTY(QColor lineColor READ lineColor WRITE setLineColor NOTIFY lineColorChanged FINAL)

public:
    using DrawnItem::DrawnItem;

    QList<double> data() const { return m_data; }
    void setData(const QList<double> &data);
    QColor lineColor() const { return m_lineColor; }
    void setLineColor(const QColor &color);

    void paint(QPainter *painter) override;

signals:
    void dataChanged();
    void lineColorChanged();

private:
    QList<double> m_data;
    QColor m_lineColor;
};
