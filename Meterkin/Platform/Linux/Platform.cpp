#include "Platform/Linux/Platform.h"

#include "Platform/Linux/Hotkey/PortalRegistrar.h"
#include "Platform/Linux/Sensors/FanSource.h"
#include "Platform/Linux/Sensors/PageCounters.h"
#include "Platform/Linux/Sensors/ProcessorTicks.h"
#include "Platform/Linux/Tray/StatusItem.h"
#include "Platform/Linux/Windows/Plugin.h"
#include "Platform/Log.h"

#include <QCoreApplication>

#include <unistd.h>

namespace {

// On X11 the text size is part of the screen's scale, which Qt follows.
LinuxDesktopAppearance::TextScale textScaleSource()
{
    return isOnX11() ? LinuxDesktopAppearance::TextScale::FromWindowSystem
                     : LinuxDesktopAppearance::TextScale::FromPortal;
}

} // namespace

LinuxPlatform::LinuxPlatform()
    : m_notifications(m_bus)
    , m_keyDownFilter([this](std::uint32_t code) {
        return m_displayServer->keyboardLayout().virtualKeyCode(code);
    })
    , m_appearance(m_bus, textScaleSource())
    , m_restartOffer(m_notifications)
    , m_windowPlugin(m_notifications, m_restartOffer)
    , m_updates(
          {m_systemBus, m_defaults, m_notifications,
           [this](UpdateSession &session) {
               WindowPlugin *plugin = m_windowPlugin.plugin();
               return plugin == nullptr
                   ? nullptr
                   : plugin->makeUpdateWindow(session, *m_displayServer, m_appearance);
           },
           informationDictionary().value(QStringLiteral("CFBundleShortVersionString")).toString(),
           QCoreApplication::applicationFilePath(), m_restartOffer, m_replacement})
{
    const auto passSettings = [this] {
        const ThemeSettings settings = m_displayServer->themeSettings();
        m_appearance.setThemeName(settings.name);
        m_appearance.setAnimated(settings.isAnimated);
    };
    QObject::connect(m_displayServer.get(), &DisplayServer::themeSettingsChanged, &m_appearance,
                     passSettings);
    passSettings();
}

MetricSources LinuxPlatform::makeMetricSources()
{
    return {.fans = std::make_unique<LinuxFanSource>(),
            .pages = std::make_unique<LinuxPageCounters>(),
            .ticks = std::make_unique<LinuxProcessorTicks>()};
}

std::unique_ptr<StatusItem> LinuxPlatform::makeStatusItem()
{
    return std::make_unique<LinuxStatusItem>(*m_displayServer, m_bus, m_defaults, m_appearance,
                                             m_notifications);
}

std::shared_ptr<DiskImages> LinuxPlatform::diskImages()
{
    // Root could detach and move the images of all users.
    return geteuid() == 0 ? nullptr : std::make_shared<LinuxDiskImages>();
}

std::unique_ptr<Windows> LinuxPlatform::makeWindows(SettingsViewModel &settings,
                                                    UpdaterController &updater,
                                                    DashboardViewModel &dashboard)
{
    WindowPlugin *plugin = m_windowPlugin.plugin();
    return plugin == nullptr
        ? nullptr
        : plugin->makeWindows(*this, *m_displayServer, settings, updater, dashboard);
}

HotkeyRegistrar &LinuxPlatform::hotkeyRegistrar()
{
    if (!m_hotkeyRegistrar) {
        m_hotkeyRegistrar = m_displayServer->makeHotkeyRegistrar();
        qCDebug(logHotkey) << "hot key through" << (m_hotkeyRegistrar ? "X11" : "the portal");
    }
    if (!m_hotkeyRegistrar) {
        m_hotkeyRegistrar = std::make_unique<PortalRegistrar>([this](std::uint32_t keyCode) {
            return m_displayServer->keyboardLayout().keysym(keyCode);
        });
    }
    return *m_hotkeyRegistrar;
}
