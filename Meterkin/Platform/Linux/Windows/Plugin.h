#pragma once

#include "PluginIdentifier.h"

#include <QtPlugin>

#include <memory>

class DashboardViewModel;
class DesktopAppearance;
class DisplayServer;
class Platform;
class SettingsViewModel;
class UpdateSession;
class UpdateWindow;
class UpdaterController;
class Windows;

/// What needs Qt Quick, Svg or Network: in a library of its own, loaded when the first window is
/// wanted. It uses the program's own functions, so both have to be of the same build. What it makes
/// is outlived by what it is given. Main thread only.
class WindowPlugin {
public:
    virtual ~WindowPlugin() = default;

    virtual std::unique_ptr<Windows> makeWindows(Platform &platform, DisplayServer &displayServer,
                                                 SettingsViewModel &settings,
                                                 UpdaterController &updater,
                                                 DashboardViewModel &dashboard) = 0;
    virtual std::unique_ptr<UpdateWindow> makeUpdateWindow(UpdateSession &session,
                                                           DisplayServer &displayServer,
                                                           const DesktopAppearance &appearance) = 0;
};

Q_DECLARE_INTERFACE(WindowPlugin, METERKIN_WINDOW_PLUGIN)
