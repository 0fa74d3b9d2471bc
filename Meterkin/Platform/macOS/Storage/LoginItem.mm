#include "Platform/macOS/Storage/LoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

bool MacLoginItem::isEnabled() const
{
    return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
}

bool MacLoginItem::registerItem(LoginItemWish)
{
    return [SMAppService.mainAppService registerAndReturnError:nullptr];
}

bool MacLoginItem::unregisterItem()
{
    return [SMAppService.mainAppService unregisterAndReturnError:nullptr];
}
