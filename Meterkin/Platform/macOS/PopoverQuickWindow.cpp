#include "Platform/macOS/PopoverQuickWindow.h"

#include "Views/WindowContent.h"

#include <QQuickItem>

#include <algorithm>
#include <utility>

PopoverQuickWindow::PopoverQuickWindow(std::unique_ptr<QQuickItem> content)
    : m_content(std::move(content))
{
    // Of all types only this one comes without a system window of its own.
    setFlags(Qt::SubWindow | Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    m_content->setParentItem(contentItem());
}

PopoverQuickWindow::~PopoverQuickWindow()
{
    m_content.reset(); // it may refer to the window
}

QSize PopoverQuickWindow::fit(int room)
{
    const QSize wanted = wantedSize(*m_content);
    const QSize fitted(wanted.width(), std::min(wanted.height(), std::max(1, room)));
    resize(fitted);
    m_content->setSize(fitted);
    return fitted;
}

void PopoverQuickWindow::focusContent()
{
    m_content->forceActiveFocus(Qt::PopupFocusReason);
}
