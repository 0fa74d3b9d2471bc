#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef struct _NSZone NSZone;

typedef struct _NSRange {
    NSUInteger location;
    NSUInteger length;
} NSRange;

static inline NSRange NSMakeRange(NSUInteger location, NSUInteger length)
{
    NSRange range = {location, length};
    return range;
}

@protocol NSCopying
- (id)copyWithZone:(nullable NSZone *)zone;
@end

@interface NSString : NSObject <NSCopying>
+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length;
@property (readonly) NSUInteger length;
- (void)getCharacters:(unichar *)buffer range:(NSRange)range;
@end

@interface NSConstantString : NSString
@end

NS_ASSUME_NONNULL_END
