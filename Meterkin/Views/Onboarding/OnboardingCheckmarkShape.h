#pragma once

#include "Views/DrawnItem.h"

#include <QColor>
#include <QProperty>

/// A circle, clockwise from its top, and a check mark in it, each drawn up to a fraction.
class OnboardingCheckmarkShape : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    /// The drawn fractions, 0 to 1.
    Q_PROPERTY(double circleTrim READ circleTrim WRITE setCircleTrim NOTIFY trimChanged FINAL)
    Q_PROPERTY(
        double checkmarkTrim READ checkmarkTrim WRITE setCheckmarkTrim NOTIFY trimChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)

public:
    using DrawnItem::DrawnItem;

    double circleTrim() const { return m_circleTrim; }
    void setCircleTrim(double fraction) { setTrim(m_circleTrim, fraction); }
    double checkmarkTrim() const { return m_checkmarkTrim; }
    void setCheckmarkTrim(double fraction) { setTrim(m_checkmarkTrim, fraction); }
    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

signals:
    void trimChanged();
    void colorChanged();

private:
    void setTrim(double &trim, double fraction);

    double m_circleTrim = 0.0;
    double m_checkmarkTrim = 0.0;
    QColor m_color;
};
