#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSWindow;

@interface NSResponder : NSObject
@end

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame;
@property NSRect frame;
@property(readonly) NSRect bounds;
@property(nullable, readonly, unsafe_unretained) NSWindow *window;
- (void)addSubview:(NSView *)view;
- (void)removeFromSuperview;
@end

NS_ASSUME_NONNULL_END
