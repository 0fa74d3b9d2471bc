#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// The side of the screen where the panel is.
enum class PanelSide { Top, Bottom, Left, Right };

/// What decides where a popover stands. Logical coordinates of the whole desktop.
struct PopoverSurroundings {
    QRect item; ///< the status item
    QRect panel; ///< what the item stands in; empty when that is not known
    QRect screen; ///< the one that holds the item
    QRect available; ///< the screen without what panels keep for themselves
};

/// Where a popover stands: fully on the screen, beside the panel.
struct PopoverPlace {
    PanelSide side = PanelSide::Top;
    QRect frame; ///< smaller than the content where the screen leaves no more

    bool operator==(const PopoverPlace &) const = default;
};

PopoverPlace placePopover(const PopoverSurroundings &surroundings, QSize content);

/// Whether a window of that place can be the panel around an item: a strip, not a desktop.
bool looksLikePanel(const QRect &window, const QRect &screen);

/// A stand-in for an item whose place nobody tells: the cursor if it is in a panel, else the corner
/// where trays usually are. `panelAtCursor` is empty when the cursor is in none.
QRect likelyItem(const QRect &screen, const QRect &available, QPoint cursor,
                 const QRect &panelAtCursor);
