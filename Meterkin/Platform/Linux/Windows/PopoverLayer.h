#pragma once

#include "Platform/Linux/LayerShell.h"
#include "Platform/Linux/Windows/PopoverPlacement.h"
#include "Platform/Linux/Windows/PopoverWindow.h"

#include <QPointer>
#include <QScreen>

#include <memory>
#include <vector>

/// A popover's place on a Wayland desktop that has a layer shell: at the panel, above all else,
/// with the keyboard. A press elsewhere goes to windows behind it that nobody sees. Main thread
/// only.
class PopoverLayer : public QObject {
    Q_OBJECT

public:
    /// Both outlive it. The window is made for a layer shell.
    PopoverLayer(LayerShell &shell, PopoverWindow &window);
    ~PopoverLayer() override;

    /// ready() follows: the window may be shown then. `item` may be empty.
    void open(const QRect &item);
    bool isOpen() const { return m_isOpen; }
    /// Fits a window that is open to its content.
    void place();
    void close();

signals:
    void ready();
    /// The user has pressed elsewhere, or the desktop has taken the window away.
    void dismissed();

private:
    class Backdrop;

    void measure(QSize free);

    PopoverWindow &m_window;
    std::unique_ptr<LayerSurface> m_surface;
    LayerShell &m_shell;
    std::vector<std::unique_ptr<Backdrop>> m_backdrops; ///< one a screen
    QRect m_item;
    QPointer<QScreen> m_screen; ///< absent while the compositor has not chosen it
    PopoverSurroundings m_surroundings;
    bool m_isOpen = false;
};
