#pragma once

#include <QColor>

#ifdef __OBJC__
#import <AppKit/AppKit.h>

/// In device RGB, as the drawing appearance of the moment has it. Invalid for nil and for what has
/// no components, such as a pattern.
QColor colorOf(NSColor *_Nullable color);
/// One that stays as it is in every appearance.
NSColor *_Nonnull appKitColor(const QColor &color);
#endif
