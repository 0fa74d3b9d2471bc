#pragma once

#include <QMargins>
#include <QObject>
#include <QSize>

#include <memory>
#include <optional>

class QScreen;
class QWindow;

/// Where a layer surface stands on its screen.
struct LayerPlace {
    Qt::Edges edges; ///< the ones that it keeps its distance to
    QMargins distances; ///< to those edges, or to the panels along them; logical pixels
    QSize size; ///< logical pixels
};

/// Lets a window stand at a place of our choice on a Wayland desktop, above others and in no task
/// bar. The window has the flag Qt::BypassWindowManagerHint, so that Qt leaves its surface to us,
/// and outlives this. Main thread only.
class LayerSurface : public QObject {
    Q_OBJECT

public:
    /// Asks how much room there is, which measured() answers. On the screen that the compositor
    /// chooses, if that is null. The window is not shown yet.
    virtual void open(QScreen *screen) = 0;
    /// After measured(). ready() follows the first call: only then may the window be shown.
    virtual void place(const LayerPlace &place) = 0;
    /// Hides the window. It may be opened again.
    virtual void close() = 0;

signals:
    void measured(QSize free); ///< the part of the screen without panels, logical pixels
    void ready();
    /// The compositor has taken the surface away, as when its screen has gone: close() it.
    void closed();
};

/// The layer shell, which many Wayland compositors have. Main thread only.
class LayerShell : public QObject {
    Q_OBJECT

public:
    enum class Kind {
        Resident, ///< below full-screen windows; never has the keyboard
        Transient, ///< above all else; takes the keyboard
        Backdrop, ///< covers its whole screen, panels too, unseen: above all else
    };

    /// Whether the compositor has it; absent until the compositor has answered, see known().
    virtual std::optional<bool> isAvailable() const = 0;
    /// Only where it is available.
    virtual std::unique_ptr<LayerSurface> makeSurface(QWindow &window, Kind kind) = 0;

signals:
    void known();
};

/// Null where Qt's windows are not those of a Wayland compositor. What it needs is loaded at the
/// first call there, and stays.
LayerShell *layerShell();
