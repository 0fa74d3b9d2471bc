#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>

#include <memory>

/// Gives the window its content and the content's size, `least` at least, now and whenever that
/// changes. The window owns the content.
void fillWindow(QQuickWindow &window, std::unique_ptr<QQuickItem> content, QSize least);

/// Makes the item know its implicit size at once, rather than before the next frame.
void layOut(QQuickItem &item);

/// Puts it into the middle of its screen.
void centreWindow(QQuickWindow &window);
