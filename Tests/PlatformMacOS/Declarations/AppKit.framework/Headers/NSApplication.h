#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication *sharedApplication;
- (void)activateIgnoringOtherApps:(BOOL)ignoring;
@end

extern __kindof NSApplication *_Null_unspecified NSApp;

NS_ASSUME_NONNULL_END
