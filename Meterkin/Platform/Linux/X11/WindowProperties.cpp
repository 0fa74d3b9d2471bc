#include "Platform/Linux/X11/WindowProperties.h"

#include "Platform/Linux/X11/Connection.h"
#include "Platform/Log.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/shape.h>

#include <array>

namespace {

constexpr quint32 EveryDesktop = 0xffffffff;

xcb_connection_t *connectionOfQt()
{
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

xcb_window_t nativeWindow(const QWindow &window)
{
    return static_cast<xcb_window_t>(window.winId());
}

QRect scaled(const QRect &logical, qreal factor)
{
    return QRectF(QPointF(logical.topLeft()) * factor, QSizeF(logical.size()) * factor).toRect();
}

} // namespace

void setX11InputRegion(QWindow &window, const QRect &region)
{
    if (const auto *shape = xcb_get_extension_data(connectionOfQt(), &xcb_shape_id);
        shape == nullptr || shape->present == 0) {
        qCDebug(logWindows,
                "The X server lacks the SHAPE extension: clicks on the popover's shadow "
                "do not reach the windows below");
        return;
    }
    const QRect native = scaled(region, window.devicePixelRatio());
    const xcb_rectangle_t rectangle{
        static_cast<qint16>(native.x()), static_cast<qint16>(native.y()),
        static_cast<quint16>(native.width()), static_cast<quint16>(native.height())};
    xcb_shape_rectangles(connectionOfQt(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, nativeWindow(window), 0, 0, 1, &rectangle);
}

void setX11FrameExtents(X11Connection &connection, QWindow &window, const QMargins &margins)
{
    const QMargins native = margins * window.devicePixelRatio();
    const std::array<qint32, 4> extents{native.left(), native.right(), native.top(),
                                        native.bottom()};
    xcb_change_property(connectionOfQt(), XCB_PROP_MODE_REPLACE, nativeWindow(window),
                        connection.atom("_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32,
                        extents.size(), extents.data());
}

void skipX11TaskBar(X11Connection &connection, const QWindow &window)
{
    // Qt adds its own states to these.
    const std::array states{connection.atom("_NET_WM_STATE_SKIP_TASKBAR"),
                            connection.atom("_NET_WM_STATE_SKIP_PAGER"),
                            connection.atom("_KDE_NET_WM_STATE_SKIP_SWITCHER")};
    xcb_change_property(connectionOfQt(), XCB_PROP_MODE_REPLACE, nativeWindow(window),
                        connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, states.size(),
                        states.data());
}

void setX11DarkTitleBar(X11Connection &connection, const QWindow &window, bool isDark)
{
    const xcb_atom_t variant = connection.atom("_GTK_THEME_VARIANT");
    if (isDark) {
        constexpr std::array dark{'d', 'a', 'r', 'k'};
        xcb_change_property(connectionOfQt(), XCB_PROP_MODE_REPLACE, nativeWindow(window), variant,
                            connection.atom("UTF8_STRING"), 8, dark.size(), dark.data());
    } else {
        xcb_delete_property(connectionOfQt(), nativeWindow(window), variant);
    }
}

void demandX11Focus(X11Connection &connection, const QWindow &window)
{
    // Window managers refuse the focus to programs that the user did not click last, and the click
    // went to the panel. They grant it to a pager. ("_NET_ACTIVE_WINDOW" in the Extended Window
    // Manager Hints)
    constexpr quint32 fromPager = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = nativeWindow(window);
    message.type = connection.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = fromPager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(connection.xcb(), 0, connection.screen().root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(connection.xcb());
}

std::optional<bool> isX11WindowOnPresentWorkspace(X11Connection &connection, const QWindow &window)
{
    const auto desktop = [&](xcb_window_t of, const char *property) {
        return connection.words(of, connection.atom(property), XCB_ATOM_CARDINAL);
    };
    const QList<quint32> own = desktop(nativeWindow(window), "_NET_WM_DESKTOP");
    const QList<quint32> current = desktop(connection.screen().root, "_NET_CURRENT_DESKTOP");
    if (own.isEmpty() || current.isEmpty())
        return std::nullopt;
    return own.first() == current.first() || own.first() == EveryDesktop;
}
