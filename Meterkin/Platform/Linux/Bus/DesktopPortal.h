#pragma once

#include <QString>

/// Where xdg-desktop-portal is on the session bus, with all its interfaces.
namespace DesktopPortal {
inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
} // namespace DesktopPortal
