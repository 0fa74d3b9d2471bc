#include "Platform/Linux/X11/Server.h"

#include "Platform/Linux/Display/ScreenCoordinates.h"
#include "Platform/Linux/Hotkey/X11/Registrar.h"
#include "Platform/Linux/Tray/Xembed/Icon.h"
#include "Platform/Linux/X11/PopupWatch.h"
#include "Platform/Linux/X11/WindowProperties.h"

#include <QGuiApplication>
#include <QScreen>

std::unique_ptr<DisplayServer> DisplayServer::make()
{
    return std::make_unique<X11Server>();
}

X11Server::X11Server()
{
    connect(&m_connection, &X11Connection::closed, this, &DisplayServer::closed);
    connect(&m_settings, &XSettings::changed, this, &DisplayServer::themeSettingsChanged);
}

std::unique_ptr<HotkeyRegistrar> X11Server::makeHotkeyRegistrar()
{
    // By the session, not by the window system of Qt: Xwayland gets no keys of Wayland windows.
    if (isWaylandDesktop())
        return nullptr;
    return std::make_unique<X11Registrar>(m_connection, m_keyboard);
}

std::unique_ptr<TrayHost> X11Server::makeTray(TitlePainter &painter)
{
    return std::make_unique<XembedIcon>(m_connection, painter);
}

bool X11Server::isComposited()
{
    // Not followed: not every compositing manager announces itself.
    return DisplayServer::isComposited()
        || (m_connection.isOpen()
            && x11SelectionOwner(m_connection, "_NET_WM_CM") != XCB_WINDOW_NONE);
}

bool X11Server::mayBypassWindowManager()
{
    if (!hasWindows())
        return false;
    if (!m_connection.isXwayland())
        return true;
    // "_NET_SUPPORTING_WM_CHECK" in the Extended Window Manager Hints
    const QList<quint32> manager = m_connection.words(
        m_connection.screen().root, m_connection.atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW);
    return !manager.isEmpty() && m_connection.text(manager.first(), "_NET_WM_NAME") == "wlroots wm";
}

std::unique_ptr<PopupWatch> X11Server::makePopupWatch()
{
    return std::make_unique<X11PopupWatch>(m_connection);
}

QRect X11Server::windowAt(QPoint place)
{
    const QScreen *screen = QGuiApplication::screenAt(place);
    if (!m_connection.isOpen() || screen == nullptr)
        return QRect();
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_window_t root = m_connection.screen().root;
    const QPoint native = nativePosition(place, *screen);
    const auto found = m_connection.awaitReply(
        xcb_translate_coordinates_reply,
        xcb_translate_coordinates(xcb, root, root, static_cast<qint16>(native.x()),
                                  static_cast<qint16>(native.y())));
    if (!found || found->child == XCB_WINDOW_NONE)
        return QRect();
    const auto geometry =
        m_connection.awaitReply(xcb_get_geometry_reply, xcb_get_geometry(xcb, found->child));
    if (!geometry)
        return QRect();
    // Only the part on this screen: a panel may span several screens or reach beyond an edge.
    const qreal scale = screen->devicePixelRatio();
    const QPoint origin = screen->geometry().topLeft();
    const QPointF offset = QPointF(QPoint(geometry->x, geometry->y) - origin) / scale;
    return QRectF(origin + offset, QSizeF(geometry->width, geometry->height) / scale)
        .toAlignedRect()
        .intersected(screen->geometry());
}

std::optional<bool> X11Server::isOnPresentWorkspace(const QWindow &window)
{
    return hasWindows() ? isX11WindowOnPresentWorkspace(m_connection, window) : std::nullopt;
}

void X11Server::setInputRegion(QWindow &window, const QRect &region)
{
    if (hasWindows())
        setX11InputRegion(window, region);
}

void X11Server::setFrameExtents(QWindow &window, const QMargins &margins)
{
    if (hasWindows())
        setX11FrameExtents(m_connection, window, margins);
}

void X11Server::skipTaskBar(const QWindow &window)
{
    if (hasWindows())
        skipX11TaskBar(m_connection, window);
}

void X11Server::setDarkTitleBar(const QWindow &window, bool isDark)
{
    if (hasWindows() && window.handle() != nullptr)
        setX11DarkTitleBar(m_connection, window, isDark);
}

void X11Server::demandFocus(const QWindow &window)
{
    if (hasWindows())
        demandX11Focus(m_connection, window);
}
