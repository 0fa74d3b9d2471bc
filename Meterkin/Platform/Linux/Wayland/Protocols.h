#pragma once

// Generated from the protocols' descriptions.
#include "LayerShell-client.h"
#include "viewporter-client.h"

#include <memory>

/// Ends a protocol object of ours by its destructor request.
template <auto destroy> struct WaylandDestroyer {
    template <typename Object> void operator()(Object *object) const { destroy(object); }
};

template <typename Object, auto destroy>
using WaylandPointer = std::unique_ptr<Object, WaylandDestroyer<destroy>>;
