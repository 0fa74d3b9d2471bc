#include "Platform/Linux/Wayland/Protocols.h"

// Generated C, which is C++ as well after its headers: these declare what it defines. That it comes
// too late to hide the symbols does no harm.
#ifdef __GNUC__
#pragma GCC diagnostic ignored "-Wattributes"
#endif
#include "LayerShell-code.h"
#include "viewporter-code.h"
