#pragma once

#include "Platform/StatusItem.h"

/// The colours of a title. Each keeps a contrast of 3:1 on the light and on the dark panels of the
/// common desktops, since a panel does not tell its background.
QColor panelColor(SystemColor color);
