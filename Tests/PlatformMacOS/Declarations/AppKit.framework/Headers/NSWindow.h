#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSWindow : NSResponder
- (void)makeKeyWindow;
- (void)makeKeyAndOrderFront:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
