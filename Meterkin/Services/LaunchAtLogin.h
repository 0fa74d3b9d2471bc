#pragma once

class LoginItem;
class SettingsViewModel;

// Keeps the login item in line with the setting, at the two moments when they may differ. Errors
// are not shown. Main thread only.

/// At start: changes the item to what is set or, when that fails, the setting to what the item is.
void synchronizeLaunchAtLogin(SettingsViewModel &settings, LoginItem &item);

/// When the user flips the switch: stores the wish, also when the item cannot be changed.
void setLaunchAtLogin(SettingsViewModel &settings, bool wish, LoginItem &item);
