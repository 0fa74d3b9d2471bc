#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// The side of the screen where the panel is.
enum class PanelSide { Top, Bottom, Left, Right };

/// What decides on a popover's place. Logical coordinates of the whole desktop.
struct PopoverSurroundings {
    QRect item; ///< the status item
    QRect panel; ///< around the item; empty when it is not known
    QRect screen; ///< with the item
    QRect available; ///< the part of the screen that is not reserved for panels
};

/// A popover's place: fully on the screen, beside the panel.
struct PopoverPlace {
    PanelSide side = PanelSide::Top;
    QRect frame; ///< smaller than the content where the screen is too small

    bool operator==(const PopoverPlace &) const = default;
};

PopoverPlace placePopover(const PopoverSurroundings &surroundings, QSize content);

/// Whether a window with that geometry can be a panel: a strip, not a whole desktop.
bool looksLikePanel(const QRect &window, const QRect &screen);

/// A guess at the place of an item that is not known: the cursor if it is in a panel, else the
/// corner where trays usually are. `panelAtCursor` is empty when the cursor is in none.
QRect likelyItem(const QRect &screen, const QRect &available, QPoint cursor,
                 const QRect &panelAtCursor);
