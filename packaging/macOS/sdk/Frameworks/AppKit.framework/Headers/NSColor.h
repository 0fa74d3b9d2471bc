#pragma once

#import <AppKit/NSColorSpace.h>

NS_ASSUME_NONNULL_BEGIN

extern NSNotificationName const NSSystemColorsDidChangeNotification;

@interface NSColor : NSObject
@property (class, readonly, strong) NSColor *alternateSelectedControlTextColor;
@property (class, readonly, strong) NSColor *controlAccentColor;
@property (class, readonly, strong) NSColor *controlBackgroundColor;
@property (class, readonly, strong) NSColor *labelColor;
@property (class, readonly, strong) NSColor *secondaryLabelColor;
@property (class, readonly, strong) NSColor *separatorColor;
@property (class, readonly, strong) NSColor *systemGreenColor;
@property (class, readonly, strong) NSColor *systemOrangeColor;
@property (class, readonly, strong) NSColor *systemRedColor;
@property (class, readonly, strong) NSColor *systemYellowColor;
@property (class, readonly, strong) NSColor *windowBackgroundColor;
+ (NSColor *)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (nullable NSColor *)colorUsingColorSpace:(NSColorSpace *)space;
@property (readonly) CGFloat redComponent;
@property (readonly) CGFloat greenComponent;
@property (readonly) CGFloat blueComponent;
@property (readonly) CGFloat alphaComponent;
@end

NS_ASSUME_NONNULL_END
