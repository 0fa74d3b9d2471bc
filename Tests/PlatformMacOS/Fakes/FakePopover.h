#pragma once

#import <AppKit/AppKit.h>

/// The popover that was made last, and what the system does to it.
namespace FakePopover {
inline NSPopover *last = nil;

/// As by a press elsewhere; its animation goes on until it is finished.
void startClosing();
void finishClosing();
} // namespace FakePopover
