#pragma once

#import <AppKit/NSStatusBarButton.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSStatusItem : NSObject
@property (nullable, readonly, strong) NSStatusBarButton *button;
@end

NS_ASSUME_NONNULL_END
