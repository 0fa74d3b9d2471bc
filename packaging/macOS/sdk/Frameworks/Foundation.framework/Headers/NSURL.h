#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject
+ (NSURL *)fileURLWithPath:(NSString *)path;
@end

NS_ASSUME_NONNULL_END
