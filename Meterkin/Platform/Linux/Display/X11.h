#pragma once

#include <QByteArray>

#include <optional>

// The X server that DISPLAY names, where there is no DisplayServer yet. A build without X11 knows
// none.

/// Whether it lets programs in. Waits for it. Any thread.
bool x11Answers();

/// One name for all spellings of it, such as ":0" and "unix:0.0"; absent when there is none.
std::optional<QByteArray> x11DisplayName();

/// Ends the busy pointer of that start, as desktops show it. Only where Qt's windows are on X11.
void endX11Startup(const QByteArray &identifier);
