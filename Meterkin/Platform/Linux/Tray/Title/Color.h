#pragma once

#include "Platform/StatusItem.h"

#include <QColor>

#include <array>
#include <optional>

/// What a title is drawn in on a panel of that background: the dashboard's colour, lighter or
/// darker where that takes it to a contrast of 4.5:1. Without a background a middle one, which
/// keeps 3:1 on the light and on the dark panels of the common desktops.
QColor titleColor(SystemColor color, const std::optional<QColor> &background);
/// All of them, by SystemColor.
std::array<QColor, 3> titleColors(const std::optional<QColor> &background);

/// What to take for the background of a panel of which one only knows that it is dark or light: as
/// Plasma's translucent one, which is nearer to the middle than those of other desktops.
QColor typicalBackground(bool isDark);

/// Whether what stands on a background is better light than dark.
bool isDarkBackground(const QColor &background);
