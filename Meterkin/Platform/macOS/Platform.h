#pragma once

#include "Platform/Platform.h"
#include "Platform/macOS/HotkeyRegistrar.h"
#include "Platform/macOS/KeyDownMonitor.h"
#include "Platform/macOS/NotificationCentre.h"
#include "Platform/macOS/ProcessActivity.h"
#include "Platform/macOS/StatusItem.h"
#include "Platform/macOS/Storage/DefaultsStore.h"
#include "Platform/macOS/Storage/LoginItem.h"
#include "Platform/macOS/UpdateFramework.h"
#include "Platform/macOS/Windows/DesktopAppearance.h"

#include <QPointer>

/// The back ends of a Mac.
class MacPlatform : public Platform {
public:
    MetricSources makeMetricSources() override;
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
    KeyDownMonitor &keyDownMonitor() override { return m_keyMonitor; }
    DesktopAppearance &desktopAppearance() override { return m_appearance; }
    std::shared_ptr<DiskImages> diskImages() override;
    std::unique_ptr<Windows> makeWindows(SettingsViewModel &settings, UpdaterController &updater,
                                         DashboardViewModel &dashboard) override;

private:
    ProcessActivity m_activity;
    MacDefaultsStore m_defaults;
    MacNotificationCentre m_notifications;
    MacHotkeyRegistrar m_hotkey;
    MacLoginItem m_loginItem;
    MacUpdateFramework m_updates;
    QPointer<MacStatusItem> m_statusItem; ///< the program's
    MacKeyDownMonitor m_keyMonitor;
    MacDesktopAppearance m_appearance;
};
