#pragma once

#import <UserNotifications/UserNotifications.h>

/// What the system does to the program. All of it comes on another thread, and is done when the
/// call returns.
@interface UNUserNotificationCenter (Fake)
- (void)forgetQuestions;
/// To the oldest unanswered question.
- (void)answerSettings:(UNAuthorizationStatus)status;
- (void)answerRequest:(BOOL)granted error:(nullable NSError *)error;
/// Shows the notification; what the delegate chose is noted.
- (void)present;
/// The handler's call is noted.
- (void)click:(nonnull NSString *)identifier;
@end
