#include "Platform/Linux/Platform.h"

#include "Platform/Linux/Hotkey/PortalRegistrar.h"
#include "Platform/Linux/Hotkey/X11Registrar.h"
#include "Platform/Linux/Sensors/FanSource.h"
#include "Platform/Linux/Sensors/PageCounters.h"
#include "Platform/Linux/Sensors/ProcessorTicks.h"
#include "Platform/Linux/Tray/StatusItem.h"
#include "Platform/Linux/Windows/Plugin.h"
#include "Platform/Log.h"

#include <QGuiApplication>

#include <unistd.h>

namespace {

// On X11 the text size is part of the screen's scale, which Qt follows.
LinuxDesktopAppearance::TextScale textScaleSource()
{
    return QGuiApplication::platformName() == QStringLiteral("xcb")
        ? LinuxDesktopAppearance::TextScale::FromWindowSystem
        : LinuxDesktopAppearance::TextScale::FromPortal;
}

} // namespace

LinuxPlatform::LinuxPlatform()
    : m_notifications(m_bus)
    , m_keyboard(m_x11)
    , m_keyDownFilter(
          [this](std::uint32_t code) { return m_keyboard.keyNames().virtualKeyCode(code); })
    , m_xsettings(m_x11)
    , m_appearance(m_bus, textScaleSource())
    , m_windowPlugin(m_notifications, [this] { restart(); })
    , m_updates(
          {m_systemBus, m_defaults, m_notifications,
           [this](UpdateSession &session) {
               WindowPlugin *plugin = m_windowPlugin.plugin();
               return plugin == nullptr ? nullptr
                                        : plugin->makeUpdateWindow(session, m_x11, m_appearance);
           },
           informationDictionary().value(QStringLiteral("CFBundleShortVersionString")).toString(),
           QCoreApplication::applicationFilePath(), [this] { restart(); }})
{
    const auto passSettings = [this] {
        m_appearance.setThemeName(m_xsettings.values().themeName);
        m_appearance.setAnimated(m_xsettings.values().isAnimated);
    };
    QObject::connect(&m_xsettings, &XSettings::changed, &m_appearance, passSettings);
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
    return std::make_unique<LinuxStatusItem>(m_x11, m_bus, m_defaults, m_appearance,
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
    return plugin == nullptr ? nullptr
                             : plugin->makeWindows(*this, m_x11, settings, updater, dashboard);
}

void LinuxPlatform::restart()
{
    m_isRestartWanted = true;
    QCoreApplication::quit();
}

HotkeyRegistrar &LinuxPlatform::hotkeyRegistrar()
{
    // By the session, not by the window system of Qt: Xwayland gets no keys of Wayland windows.
    if (!m_hotkeyRegistrar) {
        const bool isX11 = qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
        qCDebug(logHotkey) << "hot key through" << (isX11 ? "X11" : "the portal");
        if (isX11)
            m_hotkeyRegistrar = std::make_unique<X11Registrar>(m_x11, m_keyboard);
        else
            m_hotkeyRegistrar = std::make_unique<PortalRegistrar>(
                [this](std::uint32_t keyCode) { return m_keyboard.keysym(keyCode); });
    }
    return *m_hotkeyRegistrar;
}
