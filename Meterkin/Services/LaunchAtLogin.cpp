#include "Services/LaunchAtLogin.h"

#include "Model/SettingsViewModel.h"
#include "Platform/LoginItem.h"

namespace {

bool apply(LoginItem &item, bool wish, LoginItemWish origin)
{
    return wish ? item.registerItem(origin) : item.unregisterItem();
}

} // namespace

void synchronizeLaunchAtLogin(SettingsViewModel &settings, LoginItem &item)
{
    const bool wish = settings.launchAtLogin();
    const bool wasEnabled = item.isEnabled();
    // Through the model, so that the settings window shows it, too.
    if (wish != wasEnabled && !apply(item, wish, LoginItemWish::Standing))
        settings.setLaunchAtLogin(wasEnabled);
}

void setLaunchAtLogin(SettingsViewModel &settings, bool wish, LoginItem &item)
{
    settings.setLaunchAtLogin(wish);
    apply(item, wish, LoginItemWish::Expressed);
}
