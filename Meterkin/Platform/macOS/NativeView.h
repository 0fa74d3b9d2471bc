#pragma once

class QWindow;

#ifdef __OBJC__
#import <AppKit/AppKit.h>

/// The view that a window of Qt draws into; made with the window if need be.
NSView *_Nonnull viewOf(QWindow &window);
#endif
