#pragma once

class QString;
class QWindow;

/// The desktop's proof that the user's click was meant for us, as panels and notification servers
/// hand it out: the next window that asks for the focus shows it on Wayland. On X11, where windows
/// get the focus without it, it only ends the busy pointer. Main thread only.
void acceptActivationToken(const QString &token);

/// For a click that opens no window: shows the token, if there is one, by a window that is still
/// there. Else the pointer would stay busy for a while.
void spendActivationToken(QWindow &window);
