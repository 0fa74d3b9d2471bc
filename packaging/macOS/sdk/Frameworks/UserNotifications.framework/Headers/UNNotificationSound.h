#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface UNNotificationSound : NSObject
@property (class, readonly, copy) UNNotificationSound *defaultSound;
@end

NS_ASSUME_NONNULL_END
