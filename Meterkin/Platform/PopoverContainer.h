#pragma once

#include <QRect>

#include <functional>
#include <memory>

class QQuickItem;

/// The frame of the dashboard that drops from the status item: transient, animated, as large as its
/// content wants to be. Main thread only.
class PopoverContainer {
public:
    /// Makes the content: an item whose implicit size is the size it asks for. Its height may be
    /// set lower.
    using MakeContent = std::function<std::unique_ptr<QQuickItem>()>;

    virtual ~PopoverContainer() = default;

    /// `make` is called when the popover is first shown, and again after a long time hidden. What
    /// was made before is destroyed at once; with an empty function there is nothing to show.
    virtual void setContent(MakeContent make) = 0;

    virtual bool isShown() const = 0;
    /// Whether a click on the item now is the rest of the one whose press has closed the popover,
    /// which wants it closed. True at most once for each press.
    virtual bool swallowsClick(const QRect &item) = 0;
    /// Shows it at the item, with the keyboard focus. `item` is where the status item is on the
    /// screen, in logical coordinates; empty when that is not known.
    virtual void show(const QRect &item) = 0;
    virtual void close() = 0;
};
