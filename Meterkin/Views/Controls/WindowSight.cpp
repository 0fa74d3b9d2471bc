#include "Views/Controls/WindowSight.h"

#include <QEvent>

#include <utility>

void WindowSight::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange)
        return;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = data.window;
    if (m_window)
        m_window->installEventFilter(this);
    look();
}

bool WindowSight::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose || event->type() == QEvent::WindowStateChange)
        look();
    return QQuickItem::eventFilter(watched, event);
}

void WindowSight::look()
{
    const bool isSeen = m_window && m_window->isExposed()
        && !m_window->windowStates().testFlag(Qt::WindowMinimized);
    if (std::exchange(m_isSeen, isSeen) != isSeen)
        emit isSeenChanged();
}
