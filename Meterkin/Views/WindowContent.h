#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>

#include <memory>

/// Gives the window its content, in the middle of its screen, and the content's size, `least` at
/// least, now and whenever that changes. Neither is ever larger than what panels and the window's
/// frame leave of the screen, whose changes are followed, too. The window owns the content.
void fillWindow(QQuickWindow &window, std::unique_ptr<QQuickItem> content, QSize least);

/// Gives the window its content's property `color`, now and whenever that changes. The content has
/// a signal for it and belongs to the window.
void followColor(QQuickWindow &window, QQuickItem &content);

/// The size that the item asks for, in whole logical pixels, at least 1 by 1. Laid out at once
/// rather than before the next frame.
QSize wantedSize(QQuickItem &item);
