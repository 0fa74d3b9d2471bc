#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSAttributedStringKey;

@interface NSAttributedString : NSObject <NSCopying>
- (instancetype)initWithString:(NSString *)string
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id> *)attributes;
@end

NS_ASSUME_NONNULL_END
