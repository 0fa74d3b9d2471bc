#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <objc/NSObjCRuntime.h>
#include <objc/NSObject.h>
#include <objc/objc.h>

#ifndef NS_ENUM
#define NS_ENUM(type, name)                                                                        \
    enum __attribute__((enum_extensibility(open))) name : type name;                               \
    enum name : type
// As C++ sees them: bits may be put together without a cast.
#define NS_OPTIONS(type, name)                                                                     \
    type name;                                                                                     \
    enum __attribute__((flag_enum, enum_extensibility(open))) : type
#endif
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")

typedef double CGFloat;
typedef struct CGPoint {
    CGFloat x, y;
} CGPoint;
typedef struct CGSize {
    CGFloat width, height;
} CGSize;
typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
typedef unsigned short unichar;

static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    NSRect rect = {{x, y}, {width, height}};
    return rect;
}

#import <Foundation/NSString.h>

#import <Foundation/NSCollections.h>

#import <Foundation/NSData.h>
#import <Foundation/NSError.h>
#import <Foundation/NSURL.h>

#import <Foundation/NSAttributedString.h>
#import <Foundation/NSBundle.h>
#import <Foundation/NSFileManager.h>
#import <Foundation/NSKeyValueObserving.h>
#import <Foundation/NSNotification.h>
#import <Foundation/NSProcessInfo.h>
#import <Foundation/NSPropertyList.h>
#import <Foundation/NSUserDefaults.h>
