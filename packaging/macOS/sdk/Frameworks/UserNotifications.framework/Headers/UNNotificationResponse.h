#pragma once

#import <UserNotifications/UNNotification.h>

NS_ASSUME_NONNULL_BEGIN

@interface UNNotificationResponse : NSObject
@property (readonly, copy) UNNotification *notification;
@end

NS_ASSUME_NONNULL_END
