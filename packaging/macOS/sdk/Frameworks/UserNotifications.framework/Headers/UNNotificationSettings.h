#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, UNAuthorizationStatus) {
    UNAuthorizationStatusNotDetermined = 0,
    UNAuthorizationStatusDenied = 1,
    UNAuthorizationStatusAuthorized = 2,
    UNAuthorizationStatusProvisional = 3,
};

@interface UNNotificationSettings : NSObject
@property (readonly) UNAuthorizationStatus authorizationStatus;
@end

NS_ASSUME_NONNULL_END
