#pragma once

#import <UserNotifications/UNNotificationRequest.h>

NS_ASSUME_NONNULL_BEGIN

@interface UNNotification : NSObject
@property (readonly, copy) UNNotificationRequest *request;
@end

NS_ASSUME_NONNULL_END
