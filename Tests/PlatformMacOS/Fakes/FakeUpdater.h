#pragma once

#import <Sparkle/Sparkle.h>

@interface FakeUpdater : SPUUpdater {
    BOOL m_canCheck;
    BOOL m_downloads;
    NSObject *m_observer;
    void *m_context;
}
/// That of the controller made last.
+ (nonnull FakeUpdater *)latest;
/// Observers are told.
- (void)setCanCheckForUpdates:(BOOL)canCheck;
- (void)tellWithoutValue;
@end
