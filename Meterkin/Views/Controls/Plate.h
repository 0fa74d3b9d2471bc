#pragma once

#include "Views/DrawnItem.h"

#include <QColor>

/// The shape below every control: a rounded rectangle with a line along its edge, on whole pixels
/// of the screen. Main thread only.
class Plate : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed FINAL)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed FINAL)
    /// Clear: no line.
    Q_PROPERTY(QColor lineColor MEMBER m_lineColor NOTIFY changed FINAL)
    /// Logical pixels, within the shape; never less than a pixel of the screen.
    Q_PROPERTY(double lineWidth MEMBER m_lineWidth NOTIFY changed FINAL)

public:
    explicit Plate(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

signals:
    void changed();

private:
    QColor m_color = Qt::transparent;
    double m_radius = 0.0;
    QColor m_lineColor = Qt::transparent;
    double m_lineWidth = 0.5;
};
