#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo *processInfo;
@property(copy) NSString *processName;
@property(readonly) unsigned long long physicalMemory;
@end

NS_ASSUME_NONNULL_END
