#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSViewController : NSResponder
@property (strong) NSView *view;
@end

NS_ASSUME_NONNULL_END
