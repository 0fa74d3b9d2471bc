#pragma once

#include <QRect>

/// The frame of the dashboard that drops from the status item. Main thread only.
class PopoverContainer {
public:
    virtual ~PopoverContainer() = default;

    virtual bool isShown() const = 0;
    /// Shows it at the item, with the keyboard focus. `item` is where the status item is on the
    /// screen, in logical coordinates; empty when that is not known.
    virtual void show(const QRect &item) = 0;
    virtual void close() = 0;
};
