#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QRectF>

/// The bars of the cores in a chart of that width, y downwards: equally wide, 2 apart, at least 2
/// high. With very many cores the gaps shrink before the bars do.
QList<QRectF> coreBars(const QList<double> &perCoreUsage, double width, double barHeight);

/// One bar a core in the colour of its tier. `barHeight` tall, as wide as there is room.
class CoreBarChart : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        QList<double> perCoreUsage READ perCoreUsage WRITE setPerCoreUsage NOTIFY changed FINAL)
    Q_PROPERTY(double greenThreshold MEMBER m_greenThreshold NOTIFY changed FINAL)
    Q_PROPERTY(double yellowThreshold MEMBER m_yellowThreshold NOTIFY changed FINAL)
    Q_PROPERTY(double barHeight READ barHeight WRITE setBarHeight NOTIFY changed FINAL)
    /// The values as text, for screen readers.
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    Q_PROPERTY(QColor green MEMBER m_green NOTIFY changed FINAL)
    Q_PROPERTY(QColor yellow MEMBER m_yellow NOTIFY changed FINAL)
    Q_PROPERTY(QColor red MEMBER m_red NOTIFY changed FINAL)

public:
    explicit CoreBarChart(QQuickItem *parent = nullptr);

    QList<double> perCoreUsage() const { return m_perCoreUsage; }
    /// Percent, in the cores' order.
    void setPerCoreUsage(const QList<double> &usage);
    QString text() const;
    double barHeight() const { return m_barHeight; }
    /// The height of a bar at 100 percent.
    void setBarHeight(double height);

    void paint(QPainter *painter) override;

signals:
    void changed();

private:
    QList<double> m_perCoreUsage;
    double m_greenThreshold = 0.0;
    double m_yellowThreshold = 0.0;
    double m_barHeight = 0.0;
    QColor m_green;
    QColor m_yellow;
    QColor m_red;
};
