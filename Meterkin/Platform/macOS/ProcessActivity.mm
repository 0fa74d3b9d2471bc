#include "Platform/macOS/ProcessActivity.h"

#import <Foundation/Foundation.h>

struct ProcessActivity::Objects {
    id<NSObject> activity;
};

ProcessActivity::ProcessActivity()
    : m_objects(new Objects{[NSProcessInfo.processInfo
        beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                          reason:@"Readings at a steady interval"]})
{
}

ProcessActivity::~ProcessActivity()
{
    [NSProcessInfo.processInfo endActivity:m_objects->activity];
}
