#include "Platform/macOS/MainAppService.h"

#import <ServiceManagement/ServiceManagement.h>

bool MainAppService::isEnabled() const
{
    return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
}

bool MainAppService::registerItem(LoginItemWish)
{
    return [SMAppService.mainAppService registerAndReturnError:nullptr];
}

bool MainAppService::unregisterItem()
{
    return [SMAppService.mainAppService unregisterAndReturnError:nullptr];
}
