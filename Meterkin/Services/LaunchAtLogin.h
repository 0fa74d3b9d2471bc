#pragma once

class LoginItem;
class SettingsViewModel;

// Keeps the login item in line with the stored wish, at the two moments when they may part. Errors
// are silent. Main thread only.

/// At start: brings the item in line with the wish, or, when that fails, the wish with the item.
void synchronizeLaunchAtLogin(SettingsViewModel &settings, LoginItem &item);

/// When the user flips the switch: stores the wish, which stands even when the item cannot follow.
void setLaunchAtLogin(SettingsViewModel &settings, bool wish, LoginItem &item);
