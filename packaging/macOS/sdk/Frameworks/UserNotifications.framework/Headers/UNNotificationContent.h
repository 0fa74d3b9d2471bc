#pragma once

#import <UserNotifications/UNNotificationSound.h>

NS_ASSUME_NONNULL_BEGIN

@interface UNNotificationContent : NSObject
@end

@interface UNMutableNotificationContent : UNNotificationContent
@property (copy) NSString *title;
@property (copy) NSString *body;
@property (nullable, copy) UNNotificationSound *sound;
@end

NS_ASSUME_NONNULL_END
