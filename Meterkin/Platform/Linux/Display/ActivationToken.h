#pragma once

class QString;
class QWindow;

/// The desktop's proof that the user's click was meant for us, as panels and notification servers
/// hand it out: the next window that asks for the focus shows it on Wayland. On X11, where windows
/// get the focus without it, it only ends the busy pointer. Main thread only.
void acceptActivationToken(const QString &token);

/// Asks for the focus with the token, if there is one. A window that cannot show it drops it, so
/// that no later one shows an old token.
void activateWindow(QWindow &window);

/// The same for a click that opens no window, by one that is still there, and only if there is a
/// token: else the pointer would stay busy for a while.
void spendActivationToken(QWindow &window);
