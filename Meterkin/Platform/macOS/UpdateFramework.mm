#include "Platform/macOS/UpdateFramework.h"

#import <Sparkle/Sparkle.h>

namespace {

char observationContext;

} // namespace

NS_ASSUME_NONNULL_BEGIN

@interface MeterkinUpdaterObserver : NSObject {
@public
    MacUpdateFramework *owner; // outlives the observation
}
@end

NS_ASSUME_NONNULL_END

@implementation MeterkinUpdaterObserver

- (void)observeValueForKeyPath:(NSString *)keyPath
                      ofObject:(id)object
                        change:(NSDictionary *)change
                       context:(void *)context
{
    if (context != &observationContext) {
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:context];
        return;
    }
    id value = [change objectForKey:NSKeyValueChangeNewKey];
    emit owner->canCheckForUpdatesChanged([value isKindOfClass:[NSNumber class]] &&
                                          [value boolValue]);
}

@end

struct MacUpdateFramework::Objects {
    SPUStandardUpdaterController *controller;
    MeterkinUpdaterObserver *observer; // nil until observe()
};

MacUpdateFramework::MacUpdateFramework(QObject *parent)
    : UpdateFramework(parent)
{
}

MacUpdateFramework::~MacUpdateFramework()
{
    if (m_objects && m_objects->observer != nil)
        [m_objects->controller.updater removeObserver:m_objects->observer
                                           forKeyPath:@"canCheckForUpdates"];
}

void MacUpdateFramework::start()
{
    m_objects = std::make_unique<Objects>();
    m_objects->controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                          updaterDelegate:nil
                                                                       userDriverDelegate:nil];
}

void MacUpdateFramework::setAutomaticallyDownloadsUpdates(bool automatically)
{
    if (m_objects)
        m_objects->controller.updater.automaticallyDownloadsUpdates = automatically;
}

void MacUpdateFramework::observe()
{
    if (!m_objects)
        return;
    m_objects->observer = [[MeterkinUpdaterObserver alloc] init];
    m_objects->observer->owner = this;
    [m_objects->controller.updater
        addObserver:m_objects->observer
         forKeyPath:@"canCheckForUpdates"
            options:NSKeyValueObservingOptionInitial | NSKeyValueObservingOptionNew
            context:&observationContext];
}

void MacUpdateFramework::checkForUpdates()
{
    if (m_objects)
        [m_objects->controller checkForUpdates:nil];
}
