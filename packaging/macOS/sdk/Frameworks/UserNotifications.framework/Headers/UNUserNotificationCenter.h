#pragma once

#import <UserNotifications/UNNotificationResponse.h>
#import <UserNotifications/UNNotificationSettings.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, UNAuthorizationOptions) {
    UNAuthorizationOptionSound = 1 << 1,
    UNAuthorizationOptionAlert = 1 << 2,
};

typedef NS_OPTIONS(NSUInteger, UNNotificationPresentationOptions) {
    UNNotificationPresentationOptionSound = 1 << 1,
    UNNotificationPresentationOptionList = 1 << 3,
    UNNotificationPresentationOptionBanner = 1 << 4,
};

@class UNUserNotificationCenter;

@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter *)center
       willPresentNotification:(UNNotification *)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))handler;
- (void)userNotificationCenter:(UNUserNotificationCenter *)center
    didReceiveNotificationResponse:(UNNotificationResponse *)response
             withCompletionHandler:(void (^)(void))handler;
@end

@interface UNUserNotificationCenter : NSObject
@property (nullable, weak) id<UNUserNotificationCenterDelegate> delegate;
+ (UNUserNotificationCenter *)currentNotificationCenter;
- (void)getNotificationSettingsWithCompletionHandler:
    (void (^)(UNNotificationSettings *settings))handler;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError *_Nullable error))handler;
- (void)addNotificationRequest:(UNNotificationRequest *)request
         withCompletionHandler:(nullable void (^)(NSError *_Nullable error))handler;
@end

NS_ASSUME_NONNULL_END
