#pragma once

#include <QColor>

/// Colours of the small windows that we draw ourselves beside a panel: strip, menu and tool tip.
/// Dark on every desktop, as most panels are; the texts keep a contrast of at least 4.5:1.
namespace PanelStyle {

inline const QColor background(0x26, 0x26, 0x2a);
inline const QColor border(0x4a, 0x4a, 0x50);
inline const QColor text(0xf0, 0xf0, 0xf2);
inline const QColor selection(0x3d, 0x5a, 0x80);
inline constexpr int fontSize = 13; ///< logical pixels

} // namespace PanelStyle
