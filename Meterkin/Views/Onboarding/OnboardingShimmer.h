#pragma once

#include "Views/DrawnItem.h"

#include <QProperty>

/// A band of light that crosses a capsule of the item's size from left to right, slanted.
class OnboardingShimmer : public DrawnItem {
    Q_OBJECT
    QML_ELEMENT
    /// 0: before the left end, 1: past the right end; neither shows anything.
    Q_PROPERTY(double phase READ phase WRITE setPhase NOTIFY phaseChanged FINAL)

public:
    using DrawnItem::DrawnItem;

    double phase() const { return m_phase; }
    void setPhase(double phase);

    void paint(QPainter *painter) override;

signals:
    void phaseChanged();

private:
    double m_phase = 0.0;
};
