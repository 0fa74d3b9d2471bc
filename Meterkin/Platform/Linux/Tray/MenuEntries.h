#pragma once

#include <QCoreApplication>

#include <array>

/// The item's menu, the same in every kind of panel.
enum class MenuAction { OpenDashboard, OpenSettings, Quit };

struct MenuEntry {
    MenuAction action;
    const char *english;
    bool startsGroup; ///< a separator stands before it

    QString text() const { return QCoreApplication::translate("MenuEntry", english); }
};

// The dashboard comes first: some panels open nothing but the menu on a click.
inline constexpr std::array<MenuEntry, 3> menuEntries{{
    {MenuAction::OpenDashboard, QT_TRANSLATE_NOOP("MenuEntry", "Open Dashboard"), false},
    {MenuAction::OpenSettings, QT_TRANSLATE_NOOP("MenuEntry", "Open Settings"), false},
    {MenuAction::Quit, QT_TRANSLATE_NOOP("MenuEntry", "Quit meterkin"), true},
}};
