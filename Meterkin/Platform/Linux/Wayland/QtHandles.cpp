#include "Platform/Linux/Wayland/QtHandles.h"

#include <QGuiApplication>
#include <QScreen>

#include <qpa/qplatformnativeinterface.h>

wl_display *waylandDisplay()
{
    return static_cast<wl_display *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForIntegration("wl_display"));
}

wl_output *waylandOutput(QScreen &screen)
{
    if (screen.name().isEmpty())
        return nullptr;
    return static_cast<wl_output *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForScreen("output", &screen));
}

wl_surface *waylandSurface(QWindow &window)
{
    return static_cast<wl_surface *>(
        QGuiApplication::platformNativeInterface()->nativeResourceForWindow("surface", &window));
}
