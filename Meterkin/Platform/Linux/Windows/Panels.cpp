#include "Platform/Linux/Windows/Panels.h"

#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Windows/PopoverPlacement.h"
#include "Platform/Linux/Windows/Sway.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr int ProbeInset = 2; // logical pixels from a screen's edge: inside any panel

} // namespace

QRect panelAt(DisplayServer &displayServer, QPoint place)
{
    const QRect window = displayServer.windowAt(place);
    return !window.isEmpty() && looksLikePanel(window, QGuiApplication::screenAt(place)->geometry())
        ? window
        : QRect();
}

QRect freeGeometry(DisplayServer &displayServer, const QScreen &screen)
{
    if (isWaylandDesktop()) {
        if (const QRect free = swayFreeGeometry(screen); !free.isEmpty())
            return free;
    }
    const QRect all = screen.geometry();
    QRect free = screen.availableGeometry();
    if (free != all || QGuiApplication::screens().size() == 1)
        return free;
    const QPoint centre = all.center();
    if (const QRect top = panelAt(displayServer, QPoint(centre.x(), all.top() + ProbeInset));
        top.width() > top.height())
        free.setTop(top.bottom() + 1);
    if (const QRect bottom = panelAt(displayServer, QPoint(centre.x(), all.bottom() - ProbeInset));
        bottom.width() > bottom.height())
        free.setBottom(bottom.top() - 1);
    if (const QRect left = panelAt(displayServer, QPoint(all.left() + ProbeInset, centre.y()));
        left.height() > left.width())
        free.setLeft(left.right() + 1);
    if (const QRect right = panelAt(displayServer, QPoint(all.right() - ProbeInset, centre.y()));
        right.height() > right.width())
        free.setRight(right.left() - 1);
    return free;
}
