#pragma once

#include "Platform/Linux/AutostartEntry.h"
#include "Platform/Linux/DefaultsFile.h"
#include "Platform/Linux/Dialogs/InformationAlertWindow.h"
#include "Platform/Linux/InformationDictionary.h"
#include "Platform/Linux/KeyDownFilter.h"
#include "Platform/Linux/LinuxAppearance.h"
#include "Platform/Linux/LinuxNotificationCentre.h"
#include "Platform/Linux/LinuxPopover.h"
#include "Platform/Linux/LinuxWindowStyle.h"
#include "Platform/Linux/LoopDevices.h"
#include "Platform/Linux/MessageBus.h"
#include "Platform/Linux/PackageKitFramework.h"
#include "Platform/Linux/ProgramLocation.h"
#include "Platform/Linux/X11Connection.h"
#include "Platform/Linux/X11Keyboard.h"
#include "Platform/Linux/XSettings.h"
#include "Platform/Platform.h"

#include <malloc.h>

/// The back ends of a Linux desktop.
class LinuxPlatform : public Platform {
public:
    LinuxPlatform();

    std::unique_ptr<FanControllerConnection> makeFanController() override;
    std::unique_ptr<PageCounters> makePageCounters() override;
    std::unique_ptr<ProcessorTicks> makeProcessorTicks() override;
    std::unique_ptr<StatusItem> makeStatusItem() override;
    DefaultsStore &defaultsStore() override { return m_defaults; }
    void giveMemoryBack() override { malloc_trim(0); }
    QVariantMap informationDictionary() const override { return ::informationDictionary(); }
    QString bundlePath() const override { return ::bundlePath(); }
    QString computerWord() const override { return QStringLiteral("computer"); }
    NotificationCentre *notificationCentre() override { return &m_notifications; }
    PopoverContainer *popover() override { return &m_popover; }
    WindowStyle *windowStyle() override { return &m_windowStyle; }
    KeyDownMonitor *keyDownMonitor() override { return &m_keyDownFilter; }
    KeyboardLayout *keyboardLayout() override { return &m_keyboard; }
    LoginItem *loginItem() override { return &m_loginItem; }
    HotkeyRegistrar *hotkeyRegistrar() override;
    DesktopAppearance *desktopAppearance() override { return &m_appearance; }
    InformationAlert *informationAlert() override { return &m_informationAlert; }
    std::shared_ptr<DiskImages> diskImages() override;
    UpdateFramework *updateFramework() override { return &m_updates; }

    /// Whether the program is to be started anew once it has ended.
    bool isRestartWanted() const { return m_isRestartWanted; }

private:
    DefaultsFile m_defaults;
    X11Connection m_x11;
    MessageBus m_bus;
    LinuxNotificationCentre m_notifications;
    // Where it is missing it hardly ever comes.
    MessageBus m_systemBus{MessageBus::Kind::System, {.longestRetry = 60'000}};
    LinuxPopover m_popover;
    LinuxWindowStyle m_windowStyle;
    X11Keyboard m_keyboard;
    KeyDownFilter m_keyDownFilter;
    XSettings m_xsettings;
    LinuxAppearance m_appearance;
    InformationAlertWindow m_informationAlert{m_windowStyle, m_appearance};
    AutostartEntry m_loginItem{programToStart()};
    std::unique_ptr<HotkeyRegistrar> m_hotkeyRegistrar; ///< once it has been asked for
    bool m_isRestartWanted = false;
    PackageKitFramework m_updates;
};
