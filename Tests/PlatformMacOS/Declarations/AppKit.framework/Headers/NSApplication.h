#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication *sharedApplication;
@property (readonly, getter=isActive) BOOL active;
- (void)activateIgnoringOtherApps:(BOOL)ignoring;
- (void)hide:(nullable id)sender;
@end

extern __kindof NSApplication *_Null_unspecified NSApp;

NS_ASSUME_NONNULL_END
