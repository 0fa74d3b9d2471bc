#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSNotificationName;

@interface NSNotification : NSObject <NSCopying>
@end

@interface NSNotificationCenter : NSObject
@property (class, readonly, strong) NSNotificationCenter *defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)selector
               name:(nullable NSNotificationName)name
             object:(nullable id)object;
- (void)removeObserver:(id)observer;
@end

NS_ASSUME_NONNULL_END
