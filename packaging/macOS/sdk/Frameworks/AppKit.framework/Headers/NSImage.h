#pragma once

#import <AppKit/NSFont.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
+ (nullable instancetype)imageWithSystemSymbolName:(NSString *)name
                          accessibilityDescription:(nullable NSString *)description;
- (nullable NSImage *)imageWithSymbolConfiguration:(NSImageSymbolConfiguration *)configuration;
@property NSSize size;
- (void)drawInRect:(NSRect)rect;
@end

NS_ASSUME_NONNULL_END
