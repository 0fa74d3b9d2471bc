#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(uint64_t, NSActivityOptions) {
    NSActivityUserInitiatedAllowingIdleSystemSleep = 0x00EFFFFFULL,
};

@interface NSProcessInfo : NSObject
@property (class, readonly, strong) NSProcessInfo *processInfo;
@property (copy) NSString *processName;
@property (readonly) unsigned long long physicalMemory;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString *)reason;
- (void)endActivity:(id<NSObject>)activity;
@end

NS_ASSUME_NONNULL_END
