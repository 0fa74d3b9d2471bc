#pragma once

#import <UserNotifications/UNNotificationContent.h>

NS_ASSUME_NONNULL_BEGIN

@class UNNotificationTrigger;

@interface UNNotificationRequest : NSObject
@property (readonly, copy) NSString *identifier;
+ (instancetype)requestWithIdentifier:(NSString *)identifier
                              content:(UNNotificationContent *)content
                              trigger:(nullable UNNotificationTrigger *)trigger;
@end

NS_ASSUME_NONNULL_END
