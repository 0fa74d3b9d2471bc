#include "Platform/Linux/Display/ScreenCoordinates.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

/// Qt leaves a screen's origin in device pixels and scales from there.
QPoint scaled(QPoint native, const QScreen &screen)
{
    const QPoint origin = screen.geometry().topLeft();
    return origin + (QPointF(native - origin) / screen.devicePixelRatio()).toPoint();
}

const QScreen *screenOfNative(QPoint native)
{
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QSizeF size = QSizeF(screen->geometry().size()) * screen->devicePixelRatio();
        if (QRectF(screen->geometry().topLeft(), size).contains(native))
            return screen;
    }
    return nullptr;
}

} // namespace

std::optional<QPoint> logicalPosition(QPoint native)
{
    if (QGuiApplication::platformName() == u"wayland"
        && QGuiApplication::screenAt(native) != nullptr)
        return native; // Wayland knows no others
    if (const QScreen *screen = screenOfNative(native))
        return scaled(native, *screen);
    if (QGuiApplication::screenAt(native) != nullptr)
        return native;
    return std::nullopt;
}

QRect logicalRect(const QRect &native)
{
    const QScreen *screen = screenOfNative(native.topLeft());
    if (screen == nullptr)
        return QRect();
    return QRect(scaled(native.topLeft(), *screen),
                 (QSizeF(native.size()) / screen->devicePixelRatio()).toSize());
}

QPoint nativePosition(QPoint logical, const QScreen &screen)
{
    const QPoint origin = screen.geometry().topLeft();
    return origin + (QPointF(logical - origin) * screen.devicePixelRatio()).toPoint();
}
