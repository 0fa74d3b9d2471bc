#pragma once

#include "Views/DrawnItem.h"

#include <QColor>
#include <QList>
#include <QRect>

/// The bars of the cores in a chart of that many pixels, y downwards, where 1 logical pixel is
/// `scale` of them: 2 logical pixels apart, at least 2 high, and equally wide, to a pixel. With
/// very many cores the gaps shrink before the bars do.
QList<QRect> coreBars(const QList<double> &perCoreUsage, QSize chart, double scale);

/// One bar a core in the colour of its tier, in a faint track. `barHeight` tall, as wide as there
/// is room, on whole pixels of the screen.
class CoreBarChart : public DrawnItem {
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
    Q_PROPERTY(QColor track MEMBER m_track NOTIFY changed FINAL)

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
    QColor m_track;
};
