#pragma once

class X11Connection;

/// Whether Qt's windows are those of the X server that the connection leads to.
bool isOnX11(const X11Connection &connection);

/// Whether windows may be transparent at the moment. The connection may be closed.
bool isComposited(X11Connection &connection);
