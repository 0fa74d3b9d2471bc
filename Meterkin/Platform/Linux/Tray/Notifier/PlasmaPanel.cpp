#include "Platform/Linux/Tray/Notifier/PlasmaPanel.h"

#include "Platform/Linux/Display/DesktopAppearance.h"
#include "Platform/Linux/Storage/KeyValueLines.h"

#include <QFile>
#include <QStandardPaths>

namespace {

/// Empty while the user has chosen none.
QString themeName()
{
    // The user's file comes first, then what the chosen look brings.
    for (const QString &path : QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation,
                                                         QStringLiteral("plasmarc"))) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const KeyValueLines lines(file.readAll(), "[Theme]");
        if (const auto name = lines.hasGroup() ? lines.value("name") : std::nullopt)
            return QString::fromUtf8(*name);
    }
    return QString();
}

} // namespace

std::optional<bool> isPlasmaPanelDark(std::optional<bool> isDesktopDark)
{
    const QString theme = themeName();
    if (theme.isEmpty() || theme == QStringLiteral("default"))
        return isDesktopDark;
    if (isDarkThemeName(theme))
        return true;
    return theme == QStringLiteral("breeze-light") ? std::optional(false) : std::nullopt;
}
