#pragma once

#include <QQuickItem>

class QQuickWindow;

/// Fills a window below all else and moves it by the presses that nothing above wants. Belongs to
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
