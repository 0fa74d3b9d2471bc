#include "Platform/Linux/Display/Server.h"

#include "Platform/HotkeyRegistrar.h"
#include "Platform/Linux/Display/PopupWatch.h"
#include "Platform/Linux/Tray/Host.h"

#include <QGuiApplication>

bool isOnX11()
{
    return QGuiApplication::platformName() == u"xcb";
}

bool isWaylandDesktop()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

std::unique_ptr<HotkeyRegistrar> DisplayServer::makeHotkeyRegistrar()
{
    return nullptr;
}

std::unique_ptr<TrayHost> DisplayServer::makeTray(TitlePainter & /*painter*/)
{
    return nullptr;
}

bool DisplayServer::isComposited()
{
    return QGuiApplication::platformName() == u"wayland";
}

std::unique_ptr<PopupWatch> DisplayServer::makePopupWatch()
{
    return std::make_unique<PopupWatch>();
}

std::optional<bool> DisplayServer::isOnPresentWorkspace(const QWindow & /*window*/)
{
    return std::nullopt;
}
