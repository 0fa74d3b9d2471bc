#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

@class NSWindow;

@interface NSApplication : NSResponder
@property (class, readonly, strong) __kindof NSApplication *sharedApplication;
@property (readonly, getter=isActive) BOOL active;
- (void)activateIgnoringOtherApps:(BOOL)ignoring;
@property (readonly, copy) NSArray<NSWindow *> *windows;
- (void)hide:(nullable id)sender;
- (void)unhideWithoutActivation;
@end

extern __kindof NSApplication *_Null_unspecified NSApp;

NS_ASSUME_NONNULL_END
