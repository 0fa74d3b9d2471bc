#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/DesktopAppearance.h"
#include "Platform/DiskImages.h"
#include "Platform/HotkeyRegistrar.h"
#include "Platform/KeyDownMonitor.h"
#include "Platform/KeyboardLayout.h"
#include "Platform/LoginItem.h"
#include "Platform/MetricSources.h"
#include "Platform/NotificationCentre.h"
#include "Platform/StatusItem.h"
#include "Platform/UpdateFramework.h"
#include "Platform/Windows.h"

#include <QVariantMap>

#include <memory>

class DashboardViewModel;
class SettingsViewModel;
class UpdaterController;

/// The back ends of one system. It outlives all that is built on it. Main thread only.
class Platform {
public:
    virtual ~Platform() = default;

    virtual MetricSources makeMetricSources() = 0;
    virtual std::unique_ptr<StatusItem> makeStatusItem() = 0;
    virtual DefaultsStore &defaultsStore() = 0;
    /// What people call a machine of this system.
    virtual QString computerWord() const = 0;

    /// What the build says of the program, by the keys of a bundle's property list:
    /// "CFBundleName", "CFBundleShortVersionString", "SUFeedURL". Any may be missing.
    virtual QVariantMap informationDictionary() const = 0;
    /// The file or folder that was installed and holds the program: absolute, without a slash at
    /// its end.
    virtual QString bundlePath() const = 0;

    virtual NotificationCentre &notificationCentre() = 0;
    virtual HotkeyRegistrar &hotkeyRegistrar() = 0;
    virtual LoginItem &loginItem() = 0;
    virtual UpdateFramework &updateFramework() = 0;
    virtual KeyDownMonitor &keyDownMonitor() = 0;
    virtual DesktopAppearance &desktopAppearance() = 0;

    /// Loads what windows need. Null where that fails, which the user has been told; it may work
    /// the next time. The models outlive the windows.
    virtual std::unique_ptr<Windows> makeWindows(SettingsViewModel &settings,
                                                 UpdaterController &updater,
                                                 DashboardViewModel &dashboard) = 0;

    /// Null where hot keys are written with the symbols of the Mac's keyboards.
    virtual KeyboardLayout *keyboardLayout() { return nullptr; }
    /// Null where the program must not touch disk images, as for root.
    virtual std::shared_ptr<DiskImages> diskImages() = 0;

    /// Returns freed memory to the system, soon. Called when a window's views are gone.
    virtual void giveMemoryBack() = 0;
};
