#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>

#include <memory>

/// Gives the window its content and the content's size, `least` at least, now and whenever that
/// changes. The window owns the content.
void fillWindow(QQuickWindow &window, std::unique_ptr<QQuickItem> content, QSize least);

/// Puts it into the middle of its screen.
void centreWindow(QQuickWindow &window);
