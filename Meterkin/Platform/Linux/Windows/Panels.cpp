#include "Platform/Linux/Windows/Panels.h"

#include "Platform/Linux/Windows/PopoverPlacement.h"
#include "Platform/Linux/Windows/Sway.h"
#include "Platform/Linux/X11/ScreenCoordinates.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr int ProbeInset = 2; // logical pixels from a screen's edge: inside any panel

} // namespace

QRect x11PanelAt(X11Connection &connection, QPoint place)
{
    const QScreen *screen = QGuiApplication::screenAt(place);
    if (!connection.isOpen() || screen == nullptr)
        return QRect();
    xcb_connection_t *xcb = connection.xcb();
    const xcb_window_t root = connection.screen().root;
    const QPoint native = nativePosition(place, *screen);
    const auto found = connection.awaitReply(
        xcb_translate_coordinates_reply,
        xcb_translate_coordinates(xcb, root, root, static_cast<qint16>(native.x()),
                                  static_cast<qint16>(native.y())));
    if (!found || found->child == XCB_WINDOW_NONE)
        return QRect();
    const auto geometry =
        connection.awaitReply(xcb_get_geometry_reply, xcb_get_geometry(xcb, found->child));
    if (!geometry)
        return QRect();
    // Only the part on this screen: a panel may span several screens or reach beyond an edge.
    const qreal scale = screen->devicePixelRatio();
    const QPoint origin = screen->geometry().topLeft();
    const QPointF offset = QPointF(QPoint(geometry->x, geometry->y) - origin) / scale;
    const QRect window = QRectF(origin + offset, QSizeF(geometry->width, geometry->height) / scale)
                             .toAlignedRect()
                             .intersected(screen->geometry());
    return looksLikePanel(window, screen->geometry()) ? window : QRect();
}

QRect x11FreeGeometry(X11Connection &connection, const QScreen &screen)
{
    if (connection.isXwayland()) {
        if (const QRect free = swayFreeGeometry(screen); !free.isEmpty())
            return free;
    }
    const QRect all = screen.geometry();
    QRect free = screen.availableGeometry();
    if (free != all || QGuiApplication::screens().size() == 1)
        return free;
    const QPoint centre = all.center();
    if (const QRect top = x11PanelAt(connection, QPoint(centre.x(), all.top() + ProbeInset));
        top.width() > top.height())
        free.setTop(top.bottom() + 1);
    if (const QRect bottom = x11PanelAt(connection, QPoint(centre.x(), all.bottom() - ProbeInset));
        bottom.width() > bottom.height())
        free.setBottom(bottom.top() - 1);
    if (const QRect left = x11PanelAt(connection, QPoint(all.left() + ProbeInset, centre.y()));
        left.height() > left.width())
        free.setLeft(left.right() + 1);
    if (const QRect right = x11PanelAt(connection, QPoint(all.right() - ProbeInset, centre.y()));
        right.height() > right.width())
        free.setRight(right.left() - 1);
    return free;
}
