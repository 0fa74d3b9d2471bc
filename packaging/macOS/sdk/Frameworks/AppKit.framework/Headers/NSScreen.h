#pragma once

#import <Foundation/Foundation.h>

@interface NSScreen : NSObject
@property (readonly) NSRect visibleFrame;
@end
