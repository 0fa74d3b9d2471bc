#pragma once

#include "Platform/Linux/Plugins/LayerShell.h"

#include <QPoint>

#include <memory>
#include <vector>

/// Unseen windows of the layer shell that cover all screens. They take the presses beside a
/// transient surface, and learn where the pointer is. Main thread only.
class LayerBackdrops : public QObject {
    Q_OBJECT

public:
    LayerBackdrops();
    ~LayerBackdrops() override;

    /// The shell outlives them.
    void open(LayerShell &shell);
    /// Leaves a part of that screen, in logical pixels of the desktop, to what stands there. The
    /// rest stays above panels, which would show tool tips for a pointer that rests.
    void spare(const QScreen &screen, const QRect &place);
    void close();

signals:
    /// One of them covers its screen; pointerFound() follows at once if the pointer is there.
    void shown();
    /// Logical pixels from that screen's corner.
    void pointerFound(QScreen &screen, QPoint position);
    void pressed();

private:
    class Window;

    std::vector<std::unique_ptr<Window>> m_windows; ///< one a screen
};
