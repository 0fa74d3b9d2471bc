#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSValue : NSObject
@property (readonly) const char *objCType;
@end

@interface NSNumber : NSValue
+ (NSNumber *)numberWithBool:(BOOL)value;
+ (NSNumber *)numberWithDouble:(double)value;
+ (NSNumber *)numberWithLongLong:(long long)value;
@property (readonly) BOOL boolValue;
@property (readonly) double doubleValue;
@property (readonly) long long longLongValue;
@end

@interface NSArray<__covariant Element> : NSObject
+ (instancetype)arrayWithObjects:(const Element _Nonnull[_Nonnull])objects count:(NSUInteger)count;
@property (readonly) NSUInteger count;
- (Element)objectAtIndex:(NSUInteger)index;
@end

@interface NSDictionary<__covariant Key, __covariant Value> : NSObject
+ (instancetype)dictionaryWithObjects:(const Value _Nonnull[_Nonnull])objects
                              forKeys:(const id<NSCopying> _Nonnull[_Nonnull])keys
                                count:(NSUInteger)count;
@property (readonly) NSUInteger count;
@property (readonly, copy) NSArray<Key> *allKeys;
- (nullable Value)objectForKey:(Key)key;
@end

@interface NSMutableDictionary<Key, Value> : NSDictionary <Key, Value>
+ (instancetype)dictionary;
- (void)setObject:(Value)object forKey:(id<NSCopying>)key;
@end

NS_ASSUME_NONNULL_END
