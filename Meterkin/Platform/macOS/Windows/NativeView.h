#pragma once

#include <QtGui/qwindowdefs.h>

#ifdef __OBJC__
#import <AppKit/AppKit.h>

/// The view with this window identifier: QWindow::winId() is an NSView on a Mac. Nil for 0.
inline NSView *_Nullable viewOf(WId identifier)
{
    return (__bridge NSView *)reinterpret_cast<void *>(identifier);
}
#endif
