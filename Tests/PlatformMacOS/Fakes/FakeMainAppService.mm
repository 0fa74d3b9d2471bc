#import <ServiceManagement/ServiceManagement.h>

#include "Fakes/CallLog.h"
#include "Fakes/FakeMainAppService.h"

@implementation SMAppService

+ (SMAppService *)mainAppService
{
    static SMAppService *service = [[SMAppService alloc] init];
    return service;
}

- (SMAppServiceStatus)status
{
    return static_cast<SMAppServiceStatus>(FakeMainAppService::status);
}

- (BOOL)changeTo:(SMAppServiceStatus)status
{
    if (FakeMainAppService::works)
        FakeMainAppService::status = status;
    return FakeMainAppService::works;
}

- (BOOL)registerAndReturnError:(NSError **)error
{
    CallLog::note(QStringLiteral("register"));
    return [self changeTo:SMAppServiceStatusEnabled];
}

- (BOOL)unregisterAndReturnError:(NSError **)error
{
    CallLog::note(QStringLiteral("unregister"));
    return [self changeTo:SMAppServiceStatusNotRegistered];
}

@end
