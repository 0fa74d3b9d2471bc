#include "Platform/macOS/UpdateFramework.h"
#include "Support/TestMain.h"

#include <QSignalSpy>
#include <QtTest>

#import <Sparkle/Sparkle.h>

// Of the framework the case reaches only some methods.
#pragma clang diagnostic ignored "-Wincomplete-implementation"

namespace {

SPUUpdater *updater; // that of the newest controller; Foundation really observes it
BOOL canCheck;

} // namespace

@implementation SPUUpdater
@dynamic automaticallyDownloadsUpdates;

- (BOOL)canCheckForUpdates
{
    return canCheck;
}

/// Observers are told.
- (void)setCanCheckForUpdates:(BOOL)can
{
    canCheck = can;
}

@end

@implementation SPUStandardUpdaterController

- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(id<SPUStandardUserDriverDelegate>)userDriverDelegate
{
    self = [super init];
    updater = startUpdater ? [[SPUUpdater alloc] init] : nil;
    return self;
}

- (SPUUpdater *)updater
{
    return updater;
}

@end

class UpdateFrameworkTest : public QObject {
    Q_OBJECT

private slots:
    void followsTheUpdater()
    {
        canCheck = YES;
        {
            MacUpdateFramework framework;
            framework.setAutomaticallyDownloadsUpdates(true);
            framework.observe();
            framework.checkForUpdates(); // all three too early
            QSignalSpy told(&framework, &UpdateFramework::canCheckForUpdatesChanged);
            framework.start();
            framework.observe();
            [updater setValue:[NSNumber numberWithBool:NO] forKey:@"canCheckForUpdates"];
            QCOMPARE(told, (QList<QVariantList>{{true}, {false}}));
        }
        // Of an observation that is left over the sanitizer tells.
        [updater setValue:[NSNumber numberWithBool:YES] forKey:@"canCheckForUpdates"];
    }

    void endsWithoutAnObservation() { MacUpdateFramework().start(); }
};

METERKIN_TEST(UpdateFrameworkTest);
#include "UpdateFrameworkTest.moc"
