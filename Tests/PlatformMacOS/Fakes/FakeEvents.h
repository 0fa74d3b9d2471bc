#pragma once

#import <AppKit/AppKit.h>

namespace FakeEvents {
inline NSPoint mouseLocation = {};
inline NSUInteger pressedButtons = 0;

/// Whether what watches the keys keeps this one from the windows.
bool swallows(unsigned short keyCode, NSUInteger flags);
} // namespace FakeEvents
