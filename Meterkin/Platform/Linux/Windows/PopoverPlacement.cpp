#include "Platform/Linux/Windows/PopoverPlacement.h"

#include <algorithm>
#include <array>

namespace {

// Logical pixels.
constexpr int PanelGap = 6;
constexpr int ScreenMargin = 8;
constexpr int CornerInset = 24; // of a guessed item: about the middle of the last icon

constexpr int ThickestPart = 4; // a panel is thinner than a quarter of the screen
constexpr int WideItem = 2; // wider than twice its height: not in a vertical panel

int bottomOf(const QRect &rect)
{
    return rect.top() + rect.height();
}

int rightOf(const QRect &rect)
{
    return rect.left() + rect.width();
}

PanelSide sideOf(const PopoverSurroundings &place)
{
    const QRect &strip = place.panel.isEmpty() ? place.item : place.panel;
    const QPoint centre = strip.center();
    const int fromTop = centre.y() - place.screen.top();
    const int fromBottom = bottomOf(place.screen) - centre.y();
    const int fromLeft = centre.x() - place.screen.left();
    const int fromRight = rightOf(place.screen) - centre.x();
    const PanelSide level = fromTop <= fromBottom ? PanelSide::Top : PanelSide::Bottom;
    const PanelSide upright = fromLeft < fromRight ? PanelSide::Left : PanelSide::Right;
    if (!place.panel.isEmpty())
        return strip.height() > strip.width() ? upright : level;
    if (!place.available.isEmpty()) {
        if (centre.y() < place.available.top() || centre.y() >= bottomOf(place.available))
            return level;
        if (centre.x() < place.available.left() || centre.x() >= rightOf(place.available))
            return upright;
    }
    if (strip.width() > WideItem * strip.height())
        return level;
    return std::min(fromLeft, fromRight) < std::min(fromTop, fromBottom) ? upright : level;
}

/// The space for the popover.
QRect roomFor(PanelSide side, const PopoverSurroundings &place)
{
    const QRect &strip = place.panel.isEmpty() ? place.item : place.panel;
    const QRect free = place.available.intersected(place.screen);
    int left = free.left() + ScreenMargin;
    int top = free.top() + ScreenMargin;
    int right = rightOf(free) - ScreenMargin;
    int bottom = bottomOf(free) - ScreenMargin;
    switch (side) {
    case PanelSide::Top:
        top = std::max(free.top(), bottomOf(strip)) + PanelGap;
        break;
    case PanelSide::Bottom:
        bottom = std::min(bottomOf(free), strip.top()) - PanelGap;
        break;
    case PanelSide::Left:
        left = std::max(free.left(), rightOf(strip)) + PanelGap;
        break;
    case PanelSide::Right:
        right = std::min(rightOf(free), strip.left()) - PanelGap;
        break;
    }
    return QRect(left, top, std::max(1, right - left), std::max(1, bottom - top));
}

/// The start of a span of that length, around `centre` as far as the limits allow.
int centred(int centre, int length, int from, int to)
{
    return std::clamp(centre - length / 2, from, std::max(from, to - length));
}

} // namespace

PopoverPlace placePopover(const PopoverSurroundings &surroundings, QSize content)
{
    const PanelSide side = sideOf(surroundings);
    const QRect room = roomFor(side, surroundings);
    const QSize size = content.boundedTo(room.size());
    const QPoint centre = surroundings.item.center();
    int left = centred(centre.x(), size.width(), room.left(), rightOf(room));
    int top = centred(centre.y(), size.height(), room.top(), bottomOf(room));
    switch (side) {
    case PanelSide::Top:
        top = room.top();
        break;
    case PanelSide::Bottom:
        top = bottomOf(room) - size.height();
        break;
    case PanelSide::Left:
        left = room.left();
        break;
    case PanelSide::Right:
        left = rightOf(room) - size.width();
        break;
    }
    return {side, QRect(QPoint(left, top), size)};
}

bool looksLikePanel(const QRect &window, const QRect &screen)
{
    const int thickness = std::min(window.width(), window.height());
    return thickness > 0 && thickness < std::min(screen.width(), screen.height()) / ThickestPart;
}

QRect likelyItem(const QRect &screen, const QRect &available, QPoint cursor,
                 const QRect &panelAtCursor)
{
    constexpr QSize point(1, 1);
    if (screen.contains(cursor) && (!panelAtCursor.isEmpty() || !available.contains(cursor)))
        return QRect(cursor, point);
    // In the thickest strip that is reserved for panels: trays are at its right or lower end.
    const std::array<int, 4> kept{
        available.top() - screen.top(), bottomOf(screen) - bottomOf(available),
        available.left() - screen.left(), rightOf(screen) - rightOf(available)};
    const int right = rightOf(screen) - CornerInset;
    const int bottom = bottomOf(screen) - CornerInset;
    const auto largest = std::max_element(kept.begin(), kept.end());
    switch (static_cast<PanelSide>(largest - kept.begin())) {
    case PanelSide::Top:
        break;
    case PanelSide::Bottom:
        return QRect(QPoint(right, bottomOf(screen) - *largest / 2), point);
    case PanelSide::Left:
        return QRect(QPoint(screen.left() + *largest / 2, bottom), point);
    case PanelSide::Right:
        return QRect(QPoint(rightOf(screen) - *largest / 2, bottom), point);
    }
    return QRect(QPoint(right, screen.top() + *largest / 2), point);
}
