#pragma once

#include <optional>

/// Whether Plasma's panels are dark. They follow the colour scheme unless the user's Plasma theme,
/// as Plasma's settings name it, brings colours of its own: absent where those are not known.
std::optional<bool> isPlasmaPanelDark(std::optional<bool> isDesktopDark);
