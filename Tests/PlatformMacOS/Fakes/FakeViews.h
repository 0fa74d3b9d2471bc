#pragma once

#import <AppKit/AppKit.h>

#include <QString>

struct FakeApplication {
    inline static NSArray<NSWindow *> *windows = nil;
};

/// Puts the view into a window of that name, with its lower left corner at that place of a screen
/// with so much free height. No name: into none.
void placeInWindow(NSView *view, const QString &name, NSPoint place = {}, CGFloat freeHeight = 800);
