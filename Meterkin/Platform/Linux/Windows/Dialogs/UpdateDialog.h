#pragma once

#include "Platform/Linux/Updates/Window.h"
#include "Platform/Linux/Windows/Dialogs/Window.h"
#include "Platform/Linux/Windows/WindowStyle.h"

class UpdateSession;

/// A check for updates, as the user sees it.
class UpdateDialog : public UpdateWindow {
    Q_OBJECT

public:
    /// All three outlive it.
    UpdateDialog(UpdateSession &session, DisplayServer &displayServer,
                 const DesktopAppearance &appearance);

    void present() override { m_dialog.present(); }
    void close() override { m_dialog.window().close(); }

private:
    LinuxWindowStyle m_style;
    DialogWindow m_dialog;
};
