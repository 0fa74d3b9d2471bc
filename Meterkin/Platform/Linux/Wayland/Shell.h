#pragma once

#include "Platform/Linux/Plugins/LayerShell.h"
#include "Platform/Linux/Wayland/Protocols.h"

#include "PluginIdentifier.h"

/// The layer shell of the compositor that Qt is connected to.
class WaylandLayerShell : public LayerShell {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID METERKIN_LAYER_SHELL)

public:
    WaylandLayerShell();
    ~WaylandLayerShell() override;

    std::optional<bool> isAvailable() const override;
    std::unique_ptr<LayerSurface> makeSurface(QWindow &window, Kind kind) override;

private:
    void bind(std::uint32_t name, QByteArrayView interface, std::uint32_t version);
    void forget();

    WaylandPointer<wl_registry> m_registry;
    WaylandPointer<wl_callback> m_question; ///< until it is answered
    WaylandPointer<zwlr_layer_shell_v1> m_shell;
    WaylandPointer<wp_viewporter> m_viewporter;
};
