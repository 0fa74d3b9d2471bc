#import <AppKit/AppKit.h>

// Stands in until the views' own fakes are here.
@implementation NSView
@dynamic frame, bounds, window;
- (instancetype)initWithFrame:(NSRect)frame
{
    (void)frame;
    return [super init];
}
- (void)addSubview:(NSView *)view
{
    (void)view;
}
- (void)removeFromSuperview
{
}
@end

@implementation NSApplication
+ (NSApplication *)sharedApplication
{
    static NSApplication *const application = [[NSApplication alloc] init];
    return application;
}
- (void)activateIgnoringOtherApps:(BOOL)ignoring
{
    (void)ignoring;
}
@end
