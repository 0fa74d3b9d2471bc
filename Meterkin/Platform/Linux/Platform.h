#pragma once

#include "Platform/Linux/Bus/Connection.h"
#include "Platform/Linux/DiskImages.h"
#include "Platform/Linux/Display/DesktopAppearance.h"
#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Hotkey/KeyDownMonitor.h"
#include "Platform/Linux/Notifications/NotificationCentre.h"
#include "Platform/Linux/Plugins/WindowLoader.h"
#include "Platform/Linux/Process/InformationDictionary.h"
#include "Platform/Linux/Process/Memory.h"
#include "Platform/Linux/Process/ProgramLocation.h"
#include "Platform/Linux/Storage/DefaultsStore.h"
#include "Platform/Linux/Storage/LoginItem.h"
#include "Platform/Linux/Updates/ReplacementWatch.h"
#include "Platform/Linux/Updates/RestartOffer.h"
#include "Platform/Linux/Updates/UpdateFramework.h"
#include "Platform/Platform.h"

#include <QCoreApplication>

/// The back ends of a Linux desktop.
class LinuxPlatform : public Platform {
public:
    LinuxPlatform();

    MetricSources makeMetricSources() override;
    std::unique_ptr<StatusItem> makeStatusItem() override;
    DefaultsStore &defaultsStore() override { return m_defaults; }
    void giveMemoryBack() override { giveMemoryBackSoon(); }
    QVariantMap informationDictionary() const override { return ::informationDictionary(); }
    QString bundlePath() const override { return ::bundlePath(); }
    QString computerWord() const override
    {
        return QCoreApplication::translate("Platform", "computer");
    }
    NotificationCentre &notificationCentre() override { return m_notifications; }
    KeyDownMonitor &keyDownMonitor() override { return m_keyDownFilter; }
    KeyboardLayout *keyboardLayout() override { return &m_displayServer->keyboardLayout(); }
    LoginItem &loginItem() override { return m_loginItem; }
    HotkeyRegistrar &hotkeyRegistrar() override;
    DesktopAppearance &desktopAppearance() override { return m_appearance; }
    std::shared_ptr<DiskImages> diskImages() override;
    std::unique_ptr<Windows> makeWindows(SettingsViewModel &settings, UpdaterController &updater,
                                         DashboardViewModel &dashboard) override;
    UpdateFramework &updateFramework() override { return m_updates; }

    /// Offers to restart the program as that one.
    void offerRestart(const QString &program) { m_restartOffer.post(program); }
    /// The program that is to be started when this one has ended; empty for none.
    const QString &programToRestart() const { return m_restartOffer.accepted(); }

private:
    LinuxDefaultsStore m_defaults;
    const std::unique_ptr<DisplayServer> m_displayServer = DisplayServer::make();
    BusConnection m_bus;
    LinuxNotificationCentre m_notifications;
    // A system bus that is missing hardly ever appears later.
    BusConnection m_systemBus{BusConnection::Kind::System,
                              {.longestRetry = std::chrono::minutes(1)}};
    LinuxKeyDownMonitor m_keyDownFilter;
    LinuxDesktopAppearance m_appearance;
    LinuxLoginItem m_loginItem{programToStart()};
    std::unique_ptr<HotkeyRegistrar> m_hotkeyRegistrar; ///< once it was asked for
    RestartOffer m_restartOffer;
    ReplacementWatch m_replacement;
    WindowPluginLoader m_windowPlugin;
    LinuxUpdateFramework m_updates;
};
