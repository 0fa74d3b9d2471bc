#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef CGFloat NSFontWeight;

extern const NSFontWeight NSFontWeightMedium;
extern const NSFontWeight NSFontWeightRegular;
extern const NSFontWeight NSFontWeightSemibold;

@interface NSFont : NSObject
+ (NSFont *)monospacedDigitSystemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight;
@end

NS_ASSUME_NONNULL_END
