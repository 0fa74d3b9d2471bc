#pragma once

#include <QColor>

#ifdef __OBJC__
#import <AppKit/AppKit.h>

/// In device RGB, for the current drawing appearance. Invalid for nil and for colours without
/// components, such as patterns.
QColor colorOf(NSColor *_Nullable color);
/// A fixed colour, the same in every appearance.
NSColor *_Nonnull appKitColor(const QColor &color);
#endif
