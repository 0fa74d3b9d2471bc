#import "Fakes/FakeUpdater.h"

#include "Fakes/CallLog.h"

namespace {

FakeUpdater *latestUpdater;

} // namespace

@implementation SPUUpdater
@dynamic canCheckForUpdates, automaticallyDownloadsUpdates;
@end

@implementation FakeUpdater

+ (FakeUpdater *)latest
{
    return latestUpdater;
}

- (BOOL)canCheckForUpdates
{
    return m_canCheck;
}

- (void)setCanCheckForUpdates:(BOOL)canCheck
{
    m_canCheck = canCheck;
}

- (BOOL)automaticallyDownloadsUpdates
{
    return m_downloads;
}

- (void)setAutomaticallyDownloadsUpdates:(BOOL)downloads
{
    CallLog::note(QStringLiteral("downloads %1").arg(downloads));
    m_downloads = downloads;
}

- (void)addObserver:(NSObject *)observer
         forKeyPath:(NSString *)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void *)context
{
    CallLog::note(QStringLiteral("observe %1 %2%3")
                      .arg(QString::fromUtf8(keyPath.UTF8String))
                      .arg(options)
                      .arg(context == nil ? QStringLiteral(" anonymous") : QString()));
    m_observer = observer;
    m_context = context;
    [super addObserver:observer forKeyPath:keyPath options:options context:context];
}

- (void)tellWithoutValue
{
    [m_observer observeValueForKeyPath:@"canCheckForUpdates"
                              ofObject:self
                                change:[NSDictionary dictionary]
                               context:m_context];
}

- (void)removeObserver:(NSObject *)observer forKeyPath:(NSString *)keyPath
{
    CallLog::note(QStringLiteral("unobserve %1").arg(QString::fromUtf8(keyPath.UTF8String)));
    [super removeObserver:observer forKeyPath:keyPath];
}

@end

@implementation SPUStandardUpdaterController

- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(id<SPUStandardUserDriverDelegate>)userDriverDelegate
{
    self = [super init];
    latestUpdater = [[FakeUpdater alloc] init];
    CallLog::note(QStringLiteral("controller %1%2")
                      .arg(startUpdater)
                      .arg(updaterDelegate == nil && userDriverDelegate == nil
                               ? QString()
                               : QStringLiteral(" delegates")));
    return self;
}

- (SPUUpdater *)updater
{
    return latestUpdater;
}

- (void)checkForUpdates:(id)sender
{
    CallLog::note(sender == nil ? QStringLiteral("check") : QStringLiteral("check for a sender"));
}

@end
