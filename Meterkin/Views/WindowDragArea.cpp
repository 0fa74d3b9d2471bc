#include "Views/WindowDragArea.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QStyleHints>

WindowDragArea::WindowDragArea(QQuickWindow &window)
    : QQuickItem(window.contentItem())
{
    setZ(-1);
    setAcceptedMouseButtons(Qt::LeftButton);
    const auto fill = [this] { setSize(parentItem()->size()); };
    connect(parentItem(), &QQuickItem::widthChanged, this, fill);
    connect(parentItem(), &QQuickItem::heightChanged, this, fill);
    fill();
}

void WindowDragArea::mousePressEvent(QMouseEvent *event)
{
    // Not yet: a window manager that is told after the release would go on moving the window.
    m_pressedAt = event->position();
}

void WindowDragArea::mouseMoveEvent(QMouseEvent *event)
{
    if ((event->position() - m_pressedAt).manhattanLength()
        < QGuiApplication::styleHints()->startDragDistance())
        return;
    ungrabMouse();
    window()->startSystemMove();
}
