#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace *sharedWorkspace;
@property (readonly, strong) NSNotificationCenter *notificationCenter;
@end

@interface NSWorkspace (NSWorkspaceAccessibilityDisplay)
@property (readonly) BOOL accessibilityDisplayShouldReduceMotion;
@end

extern NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;

NS_ASSUME_NONNULL_END
