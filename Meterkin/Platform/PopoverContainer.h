#pragma once

#include <QRect>

#include <functional>
#include <memory>

class QQuickItem;

/// The frame of the dashboard at the status item: transient, animated, as large as its content asks
/// for. Main thread only.
class PopoverContainer {
public:
    /// Makes the content: an item that asks for its implicit size, and gets less height where the
    /// screen is too low. What it does with Escape is its own affair.
    using MakeContent = std::function<std::unique_ptr<QQuickItem>()>;

    virtual ~PopoverContainer() = default;

    /// `make` is called when the popover is first shown, and again after it was hidden for long.
    /// Earlier content is destroyed at once. With an empty function, and where it makes nothing,
    /// nothing is shown.
    virtual void setContent(MakeContent make) = 0;

    virtual bool isShown() const = 0;
    /// Whether a click on the item now belongs to the press that has closed the popover, and so
    /// must not show it again. True at most once for each press.
    virtual bool swallowsClick(const QRect &item) = 0;
    /// Shows it at the status item, with the keyboard focus. `item` is in logical coordinates;
    /// empty when the item's place is not known.
    virtual void show(const QRect &item) = 0;
    virtual void close() = 0;
};
