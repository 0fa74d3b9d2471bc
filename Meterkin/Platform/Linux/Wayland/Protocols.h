#pragma once

// Generated from the protocols' descriptions.
#include "LayerShell-client.h"
#include "viewporter-client.h"

#include <memory>

/// Ends a protocol object of ours by its destructor request. A function for each, since the
/// generated ones are local to a file, where no template of a class may use them.
struct WaylandDestroyer {
    void operator()(wl_registry *object) const { wl_registry_destroy(object); }
    void operator()(wl_callback *object) const { wl_callback_destroy(object); }
    void operator()(wp_viewporter *object) const { wp_viewporter_destroy(object); }
    void operator()(wp_viewport *object) const { wp_viewport_destroy(object); }
    void operator()(zwlr_layer_shell_v1 *object) const { zwlr_layer_shell_v1_destroy(object); }
    void operator()(zwlr_layer_surface_v1 *object) const { zwlr_layer_surface_v1_destroy(object); }
};

template <typename Object> using WaylandPointer = std::unique_ptr<Object, WaylandDestroyer>;
