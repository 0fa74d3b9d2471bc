#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

@class NSWindow;

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame;
@property NSRect frame;
@property (readonly) NSRect bounds;
@property (nullable, readonly, unsafe_unretained) NSWindow *window;
- (void)addSubview:(NSView *)view;
- (void)removeFromSuperview;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView *)view;
@end

NS_ASSUME_NONNULL_END
