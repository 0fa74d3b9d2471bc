#include "Platform/macOS/Storage/LoginItem.h"

#include "Platform/Log.h"
#include "Platform/macOS/FoundationValues.h"

#import <ServiceManagement/ServiceManagement.h>

namespace {

bool logged(const char *change, BOOL isDone, NSError *error)
{
    if (!isDone)
        qCWarning(logStorage, "The system does not %s the login item, which stays as it is: %ls",
                  change, qUtf16Printable(textOf(error.localizedDescription)));
    return isDone;
}

} // namespace

bool MacLoginItem::isEnabled() const
{
    return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
}

bool MacLoginItem::registerItem(LoginItemWish)
{
    NSError *error = nil;
    const BOOL isDone = [SMAppService.mainAppService registerAndReturnError:&error];
    return logged("register", isDone, error);
}

bool MacLoginItem::unregisterItem()
{
    NSError *error = nil;
    const BOOL isDone = [SMAppService.mainAppService unregisterAndReturnError:&error];
    return logged("unregister", isDone, error);
}
