#pragma once

#import <AppKit/NSColor.h>
#import <AppKit/NSScreen.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskFullSizeContentView = 1 << 15,
};

typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) {
    NSWindowTitleHidden = 1,
};

typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSFloatingWindowLevel = 3;

@interface NSWindow : NSResponder
@property BOOL titlebarAppearsTransparent;
@property NSWindowTitleVisibility titleVisibility;
@property (readonly, getter=isVisible) BOOL visible;
@property NSWindowStyleMask styleMask;
@property (getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
@property (null_resettable, copy) NSColor *backgroundColor;
@property NSWindowLevel level;
@property (nullable, readonly, strong) NSScreen *screen;
- (NSRect)convertRectToScreen:(NSRect)rect;
- (BOOL)makeFirstResponder:(nullable NSResponder *)responder;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)makeKeyWindow;
@end

NS_ASSUME_NONNULL_END
