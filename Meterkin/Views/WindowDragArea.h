#pragma once

#include <QQuickItem>

class QQuickWindow;

/// Fills the window below all other items and moves it when it is dragged. A child of
/// the window.
class WindowDragArea : public QQuickItem {
    Q_OBJECT

public:
    explicit WindowDragArea(QQuickWindow &window);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    QPointF m_pressedAt;
};
