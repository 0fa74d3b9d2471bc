#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(unsigned long long, NSEventMask) {
    NSEventMaskKeyDown = 1ULL << 10,
};

typedef NSUInteger NSEventModifierFlags; // an enumeration whose members the program has as its own

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
