#pragma once

class X11Connection;

/// Whether Qt's windows are those of the X server that the connection leads to.
bool isOnX11(const X11Connection &connection);

/// Whether windows may be transparent at the moment. The connection may be closed.
bool isComposited(X11Connection &connection);

/// Whether a window may place itself past the window manager and still have the keyboard: on X11
/// and under the Xwayland of compositors that are made with wlroots, such as sway, where other ways
/// lead to the middle of the screen. Other compositors give such a window no keyboard.
bool mayBypassWindowManager(X11Connection &connection);
