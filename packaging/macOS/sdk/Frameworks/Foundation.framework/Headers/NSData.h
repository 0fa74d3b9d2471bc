#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(nullable const void *)bytes length:(NSUInteger)length;
@end

NS_ASSUME_NONNULL_END
