#include "Platform/macOS/Windows/PopoverWindow.h"

#include "Views/WindowContent.h"

#include <QQuickItem>

#include <algorithm>
#include <utility>

MacPopoverWindow::MacPopoverWindow(std::unique_ptr<QQuickItem> content)
    : m_content(std::move(content))
{
    // Only this type gets no native window of its own.
    setFlags(Qt::SubWindow | Qt::FramelessWindowHint);
    setColor(Qt::transparent);
    m_content->setParentItem(contentItem());
}

MacPopoverWindow::~MacPopoverWindow()
{
    m_content.reset(); // it may refer to the window
}

QSize MacPopoverWindow::fit(int room)
{
    const QSize wanted = wantedSize(*m_content);
    const QSize fitted(wanted.width(), std::min(wanted.height(), std::max(1, room)));
    resize(fitted);
    m_content->setSize(fitted);
    return fitted;
}

void MacPopoverWindow::focusContent()
{
    m_content->forceActiveFocus(Qt::PopupFocusReason);
}
