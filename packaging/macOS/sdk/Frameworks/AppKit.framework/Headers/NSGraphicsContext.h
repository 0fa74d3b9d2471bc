#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSGraphicsContext : NSObject
@property (class, nullable, strong) NSGraphicsContext *currentContext;
+ (NSGraphicsContext *)graphicsContextWithCGContext:(CGContextRef)graphicsPort
                                            flipped:(BOOL)initialFlippedState;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

NS_ASSUME_NONNULL_END
