#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(unsigned long long, NSEventMask) {
    NSEventMaskKeyDown = 1ULL << 10,
};

typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) {
    NSEventModifierFlagCapsLock = 1 << 16,
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
};

@interface NSEvent : NSObject
@property (readonly) unsigned short keyCode;
@property (readonly) NSEventModifierFlags modifierFlags;
@property (class, readonly) NSPoint mouseLocation;
@property (class, readonly) NSUInteger pressedMouseButtons;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent *_Nullable (^)(NSEvent *event))block;
+ (void)removeMonitor:(id)monitor;
@end

NS_ASSUME_NONNULL_END
