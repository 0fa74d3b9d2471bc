#pragma once

class X11Connection;

/// Whether windows may be transparent right now. The connection may be closed.
bool isComposited(X11Connection &connection);
