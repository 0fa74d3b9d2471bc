#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication *sharedApplication;
- (void)activateIgnoringOtherApps:(BOOL)ignoring;
@end

NS_ASSUME_NONNULL_END
