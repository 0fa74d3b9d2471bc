#include "Platform/Linux/Windows/Plugin.h"

#include "Platform/Linux/Windows/Dialogs/UpdateDialog.h"
#include "Platform/Linux/Windows/WindowSystem.h"
#include "Platform/Platform.h"
#include "Windows/ApplicationWindows.h"

class LinuxWindowPlugin : public QObject, public WindowPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID METERKIN_WINDOW_PLUGIN)
    Q_INTERFACES(WindowPlugin)

public:
    std::unique_ptr<Windows> makeWindows(Platform &platform, DisplayServer &displayServer,
                                         SettingsViewModel &settings, UpdaterController &updater,
                                         DashboardViewModel &dashboard) override
    {
        return std::make_unique<ApplicationWindows>(
            platform,
            std::make_unique<LinuxWindowSystem>(displayServer, platform.desktopAppearance()),
            settings, updater, dashboard);
    }

    std::unique_ptr<UpdateWindow> makeUpdateWindow(UpdateSession &session,
                                                   DisplayServer &displayServer,
                                                   const DesktopAppearance &appearance) override
    {
        return std::make_unique<UpdateDialog>(session, displayServer, appearance);
    }
};

#include "Plugin.moc"
