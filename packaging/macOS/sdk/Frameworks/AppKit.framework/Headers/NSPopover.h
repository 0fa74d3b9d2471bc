#pragma once

#import <AppKit/NSViewController.h>
#import <Foundation/NSGeometry.h>

#ifdef GNUSTEP // for the linter, whose Foundation has the older name only
static const NSRectEdge NSRectEdgeMinY = NSMinYEdge;
#endif

NS_ASSUME_NONNULL_BEGIN

@class NSNotification;

typedef NS_ENUM(NSInteger, NSPopoverBehavior) {
    NSPopoverBehaviorTransient = 1,
};

@protocol NSPopoverDelegate <NSObject>
@optional
- (void)popoverWillClose:(NSNotification *)notification;
- (void)popoverDidClose:(NSNotification *)notification;
@end

@interface NSPopover : NSResponder
@property (nullable, weak) id<NSPopoverDelegate> delegate;
@property NSPopoverBehavior behavior;
@property BOOL animates;
@property (nullable, strong) NSViewController *contentViewController;
@property NSSize contentSize;
@property (readonly, getter=isShown) BOOL shown;
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView *)view preferredEdge:(NSRectEdge)edge;
- (void)performClose:(nullable id)sender;
@end

NS_ASSUME_NONNULL_END
