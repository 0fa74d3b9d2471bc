#pragma once

#include "Platform/Linux/Tray/MenuEntries.h"
#include "Platform/StatusItem.h"

#include <QObject>
#include <QPoint>
#include <QRect>

#include <optional>

/// What every host shows.
struct TrayContent {
    AttributedTitle title;
    QString accessibilityLabel;

    bool operator==(const TrayContent &) const = default;
};

/// A place for the item: a kind of tray, or the strip. At most one is attached at any time. Main
/// thread only.
class TrayHost : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether there is a panel of this kind that takes the item.
    virtual bool isAvailable() const = 0;
    /// Whether that panel has turned out to squeeze every item into a square.
    virtual bool isSqueezed() const { return false; }
    /// Puts the item into the panel; does nothing while none is available.
    virtual void attach() = 0;
    /// Takes the item out of the panel.
    virtual void detach() = 0;
    /// Kept while detached; only a real difference reaches the panel.
    virtual void setContent(const TrayContent &content) = 0;
    /// Where the item is on the screens, in logical coordinates; empty when that is unknown.
    virtual QRect geometry() const = 0;
    /// What the item stands on; absent where that is not known. For panels that look as the desktop
    /// it is told what that prefers, if anything.
    virtual std::optional<QColor> background(std::optional<bool> isDesktopDark) const = 0;
    /// The desktop looks different now, and its panel may soon.
    virtual void lookAgain() { }

signals:
    void availabilityChanged(); ///< or isSqueezed()
    void backgroundChanged();
    void clicked();
    /// The pointer has entered the item or left it, in a panel that shows no tool tip by itself.
    void hoverChanged(bool isInside);
    /// The user wants the menu, in a panel that does not show it by itself.
    void menuRequested(QPoint globalPosition);
    /// The user chose from the menu that the panel showed.
    void menuChosen(MenuAction action);
};
