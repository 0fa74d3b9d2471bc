#pragma once

#import <AppKit/NSControl.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSButton : NSControl
@property (copy) NSAttributedString *attributedTitle;
@end

NS_ASSUME_NONNULL_END
