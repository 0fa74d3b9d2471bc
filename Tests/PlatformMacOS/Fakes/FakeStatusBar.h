#pragma once

#import <AppKit/AppKit.h>

@interface FakeFont : NSFont {
@public
    CGFloat m_size;
    NSFontWeight m_weight;
}
@end

@interface FakeStatusBarButton : NSStatusBarButton {
    id m_target;
    SEL m_action;
    NSAttributedString *m_title;
    NSString *m_label;
    NSString *m_toolTip;
}
/// As a click does: the action goes to the target.
- (void)press;
@end

/// What the next items of the status bar are like.
struct FakeStatusBar {
    inline static bool givesButtons = true;
    inline static NSAppearance *_Nullable appearance = nil; ///< of the menu bar
    inline static FakeStatusBarButton *_Nullable lastButton = nil;
};
