#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/DesktopAppearance.h"
#include "Platform/DiskImages.h"
#include "Platform/FanControllerConnection.h"
#include "Platform/HotkeyRegistrar.h"
#include "Platform/InformationAlert.h"
#include "Platform/KeyDownMonitor.h"
#include "Platform/KeyboardLayout.h"
#include "Platform/LoginItem.h"
#include "Platform/NotificationCentre.h"
#include "Platform/PageCounters.h"
#include "Platform/PopoverContainer.h"
#include "Platform/ProcessorTicks.h"
#include "Platform/StatusItem.h"
#include "Platform/UpdateFramework.h"
#include "Platform/WindowStyle.h"

#include <QVariantMap>

#include <memory>

/// The back ends of one system. It outlives all that is built on it. Main thread only.
class Platform {
public:
    virtual ~Platform() = default;

    virtual std::unique_ptr<FanControllerConnection> makeFanController() = 0;
    virtual std::unique_ptr<PageCounters> makePageCounters() = 0;
    virtual std::unique_ptr<ProcessorTicks> makeProcessorTicks() = 0;
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

    /// Returns to the system what memory the program does not use; called when much has been freed.
    virtual void giveMemoryBack() { }

    // Services that a system, or a build, may lack: null then, and the program does without.
    virtual NotificationCentre *notificationCentre() { return nullptr; }
    virtual HotkeyRegistrar *hotkeyRegistrar() { return nullptr; }
    virtual LoginItem *loginItem() { return nullptr; }
    virtual UpdateFramework *updateFramework() { return nullptr; }
    virtual PopoverContainer *popover() { return nullptr; }
    virtual WindowStyle *windowStyle() { return nullptr; }
    virtual KeyDownMonitor *keyDownMonitor() { return nullptr; }
    virtual KeyboardLayout *keyboardLayout() { return nullptr; }
    virtual DesktopAppearance *desktopAppearance() { return nullptr; }
    virtual std::shared_ptr<DiskImages> diskImages() { return nullptr; }
    virtual InformationAlert *informationAlert() { return nullptr; }
};
