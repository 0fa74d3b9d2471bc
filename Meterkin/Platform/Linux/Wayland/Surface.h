#pragma once

#include "Platform/Linux/Plugins/LayerShell.h"
#include "Platform/Linux/Wayland/Protocols.h"

/// A window's surface in the compositor's layer shell.
class WaylandLayerSurface : public LayerSurface {
    Q_OBJECT

public:
    /// All outlive it.
    WaylandLayerSurface(QWindow &window, LayerShell::Kind kind, zwlr_layer_shell_v1 &shell,
                        wp_viewporter &viewporter);
    ~WaylandLayerSurface() override;

    void open(QScreen *screen) override;
    void place(const LayerPlace &place) override;
    void close() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class State { Closed, Measuring, Measured, Placing, Ready };

    void configure(std::uint32_t serial, QSize size);
    void forget();

    QWindow &m_window;
    const LayerShell::Kind m_kind;
    zwlr_layer_shell_v1 &m_shell;
    wp_viewporter &m_viewporter;
    WaylandPointer<zwlr_layer_surface_v1> m_layer;
    WaylandPointer<wp_viewport> m_viewport; ///< of a backdrop
    State m_state = State::Closed;
    QSize m_configured; ///< by the compositor
};
