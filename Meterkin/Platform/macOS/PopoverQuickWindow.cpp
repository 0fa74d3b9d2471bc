#include "Platform/macOS/PopoverQuickWindow.h"

#include "Views/WindowContent.h"

#include <QKeyEvent>
#include <QQuickItem>
#include <QtMath>

#include <algorithm>
#include <utility>

PopoverQuickWindow::PopoverQuickWindow(std::unique_ptr<QQuickItem> content)
    : m_content(std::move(content))
{
    // Of all types only this one comes without a system window of its own.
    setFlags(Qt::SubWindow | Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    m_content->setParentItem(contentItem());
    connect(m_content.get(), &QQuickItem::implicitWidthChanged, this,
            &PopoverQuickWindow::wantedSizeChanged);
    connect(m_content.get(), &QQuickItem::implicitHeightChanged, this,
            &PopoverQuickWindow::wantedSizeChanged);
}

PopoverQuickWindow::~PopoverQuickWindow()
{
    m_content.reset(); // before the window goes that it may refer to
}

QSize PopoverQuickWindow::fit(int room)
{
    layOut(*m_content);
    const QSize fitted(std::max(1, qCeil(m_content->implicitWidth())),
                       std::clamp(qCeil(m_content->implicitHeight()), 1, std::max(1, room)));
    resize(fitted);
    m_content->setSize(fitted);
    // What does not scroll must not stand out of a frame that the screen has cut short.
    m_content->setClip(fitted.height() < m_content->implicitHeight());
    return fitted;
}

void PopoverQuickWindow::focusContent()
{
    m_content->forceActiveFocus(Qt::PopupFocusReason);
}

void PopoverQuickWindow::keyPressEvent(QKeyEvent *event)
{
    event->ignore(); // it stays so where no item has the focus
    QQuickWindow::keyPressEvent(event);
    if (!event->isAccepted() && event->key() == Qt::Key_Escape) {
        event->accept();
        emit dismissed();
    }
}
