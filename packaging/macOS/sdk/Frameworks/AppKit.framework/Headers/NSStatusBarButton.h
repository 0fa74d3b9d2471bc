#pragma once

#import <AppKit/NSButton.h>

@interface NSStatusBarButton : NSButton
@end
