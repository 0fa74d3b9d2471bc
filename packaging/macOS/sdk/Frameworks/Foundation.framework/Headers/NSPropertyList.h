#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSUInteger NSPropertyListFormat;
typedef NSUInteger NSPropertyListReadOptions;

@interface NSPropertyListSerialization : NSObject
+ (nullable id)propertyListWithData:(NSData *)data
                            options:(NSPropertyListReadOptions)options
                             format:(nullable NSPropertyListFormat *)format
                              error:(NSError *_Nullable *_Nullable)error;
@end

NS_ASSUME_NONNULL_END
