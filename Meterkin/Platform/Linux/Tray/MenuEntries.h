#pragma once

#include <QLatin1StringView>

#include <array>

/// The item's menu, the same in every kind of panel.
enum class MenuAction { OpenDashboard, OpenSettings, Quit };

struct MenuEntry {
    MenuAction action;
    QLatin1StringView text;
    bool startsGroup; ///< a separator stands before it
};

// The dashboard comes first: some panels open nothing but the menu on a click.
inline constexpr std::array<MenuEntry, 3> menuEntries{{
    {MenuAction::OpenDashboard, QLatin1StringView("Open Dashboard"), false},
    {MenuAction::OpenSettings, QLatin1StringView("Open Settings"), false},
    {MenuAction::Quit, QLatin1StringView("Quit meterkin"), true},
}};
