#pragma once

#include "Platform/Linux/Tray/MenuEntries.h"
#include "Platform/StatusItem.h"

#include <QObject>
#include <QPoint>
#include <QRect>

/// What every kind of tray shows of the program.
struct TrayContent {
    AttributedTitle title;
    QString accessibilityLabel;
    QString toolTip; ///< plain text, lines separated by line feeds

    bool operator==(const TrayContent &) const = default;
};

/// One way to stand in a panel. At most one of them is attached at any time. Main thread only.
class TrayHost : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether a panel of this kind is there to take the item.
    virtual bool isAvailable() const = 0;
    /// Puts the item into the panel; nothing happens while none is available.
    virtual void attach() = 0;
    /// Takes the item out of the panel.
    virtual void detach() = 0;
    /// Kept while detached; only a real difference reaches the panel.
    virtual void setContent(const TrayContent &content) = 0;
    /// Where the item is on the screens, logical coordinates; empty when that is not known.
    virtual QRect geometry() const = 0;

signals:
    void availabilityChanged();
    void clicked();
    /// The user asked for the menu and the panel leaves it to us to show it.
    void menuRequested(QPoint globalPosition);
    /// The user chose from the menu that the panel showed.
    void menuChosen(MenuAction action);
};
