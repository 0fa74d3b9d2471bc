#pragma once

#include "Platform/Linux/Plugins/LayerBackdrops.h"
#include "Platform/Linux/Windows/PopoverPlacement.h"
#include "Platform/Linux/Windows/PopoverWindow.h"

#include <QPointer>
#include <QScreen>
#include <QTimer>

#include <memory>

class PlasmaWorkArea;

/// A popover's place on a Wayland desktop that has a layer shell: at the panel, above all else,
/// with the keyboard. Behind it unseen windows cover the screens: they take a press elsewhere, and
/// tell where the pointer is, which is the only sure sign of where the item is. Main thread only.
class PopoverLayer : public QObject {
    Q_OBJECT

public:
    /// Both outlive it. The window is made for a layer shell.
    PopoverLayer(LayerShell &shell, PopoverWindow &window);
    ~PopoverLayer() override;

    /// ready() follows: the window may be shown then. `item` may be empty. The pointer counts more,
    /// if it is in a panel.
    void open(const QRect &item);
    bool isOpen() const { return m_isOpen; }
    /// Fits a window that is open to its content.
    void place();
    void close();

    /// Where the pointer was on the item; empty when it never was.
    const QRect &seenItem() const { return m_seenItem; }

signals:
    void ready();
    /// The user has pressed elsewhere, or the desktop has taken the window away.
    void dismissed();

private:
    void findPointer(QScreen &screen, QPoint position);
    void openOn(QScreen *screen);
    void measure(QSize free);
    void settle(const QRect &plasmaArea);

    LayerShell &m_shell;
    PopoverWindow &m_window;
    const std::unique_ptr<LayerSurface> m_surface;
    LayerBackdrops m_backdrops;
    QTimer m_pointerPatience;
    QRect m_item;
    QRect m_seenItem;
    QRect m_pointer; ///< as an item; empty when it was not found
    QPointer<QScreen> m_screen; ///< once it is chosen
    const std::unique_ptr<PlasmaWorkArea> m_plasma;
    QSize m_free; ///< the part of that screen beside the panels that the compositor knows
    QRect m_layerArea; ///< the same part, which a layer surface's distances count from
    PopoverSurroundings m_surroundings; ///< empty until the place of the item is known
    bool m_isOpen = false;
};
