#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColorSpace : NSObject
@property (class, readonly, strong) NSColorSpace *deviceRGBColorSpace;
@end

NS_ASSUME_NONNULL_END
