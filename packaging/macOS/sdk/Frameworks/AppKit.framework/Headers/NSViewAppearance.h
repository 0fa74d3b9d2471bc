#pragma once

#import <AppKit/NSAppearance.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSView (Appearance)
@property (readonly, strong) NSAppearance *effectiveAppearance;
@property (nullable, copy) NSString *accessibilityLabel;
@property (nullable, copy) NSString *toolTip;
@end

NS_ASSUME_NONNULL_END
