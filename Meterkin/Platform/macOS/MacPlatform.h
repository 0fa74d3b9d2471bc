#pragma once

#include "Platform/Platform.h"
#include "Platform/macOS/AppKitAlert.h"
#include "Platform/macOS/AppKitAppearance.h"
#include "Platform/macOS/AppKitPopover.h"
#include "Platform/macOS/AppKitStatusItem.h"
#include "Platform/macOS/AppKitWindowStyle.h"
#include "Platform/macOS/CarbonHotkey.h"
#include "Platform/macOS/LocalKeyMonitor.h"
#include "Platform/macOS/MainAppService.h"
#include "Platform/macOS/ProcessActivity.h"
#include "Platform/macOS/SparkleFramework.h"
#include "Platform/macOS/UserDefaultsStore.h"
#include "Platform/macOS/UserNotificationCentre.h"

#include <QPointer>

/// The back ends of a Mac.
class MacPlatform : public Platform {
public:
    MacPlatform();

    std::unique_ptr<FanSource> makeFanSource() override;
    std::unique_ptr<PageCounters> makePageCounters() override;
    std::unique_ptr<ProcessorTicks> makeProcessorTicks() override;
    std::unique_ptr<StatusItem> makeStatusItem() override;
    DefaultsStore &defaultsStore() override { return m_defaults; }
    QString computerWord() const override { return QStringLiteral("Mac"); }
    QVariantMap informationDictionary() const override;
    QString bundlePath() const override;
    void giveMemoryBack() override;
    NotificationCentre &notificationCentre() override { return m_notifications; }
    HotkeyRegistrar &hotkeyRegistrar() override { return m_hotkey; }
    LoginItem &loginItem() override { return m_loginItem; }
    UpdateFramework &updateFramework() override { return m_updates; }
    PopoverContainer &popover() override { return m_popover; }
    WindowStyle &windowStyle() override { return m_windowStyle; }
    KeyDownMonitor &keyDownMonitor() override { return m_keyMonitor; }
    DesktopAppearance &desktopAppearance() override { return m_appearance; }
    std::shared_ptr<DiskImages> diskImages() override;
    InformationAlert &informationAlert() override { return m_alert; }

private:
    ProcessActivity m_activity;
    UserDefaultsStore m_defaults;
    UserNotificationCentre m_notifications;
    CarbonHotkey m_hotkey;
    MainAppService m_loginItem;
    SparkleFramework m_updates;
    QPointer<AppKitStatusItem> m_statusItem; ///< the program's
    AppKitPopover m_popover;
    AppKitWindowStyle m_windowStyle;
    LocalKeyMonitor m_keyMonitor;
    AppKitAppearance m_appearance;
    AppKitAlert m_alert;
};
