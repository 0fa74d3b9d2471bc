#pragma once

#import <Foundation/Foundation.h>

typedef NS_ENUM(NSUInteger, NSRectEdge) {
    NSRectEdgeMinY = 1,
};
