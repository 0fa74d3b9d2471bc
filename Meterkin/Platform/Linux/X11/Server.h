#pragma once

#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Hotkey/X11/KeyboardLayout.h"
#include "Platform/Linux/X11/Connection.h"
#include "Platform/Linux/X11/XSettings.h"

/// The session's X server, which may be missing, and all that works with it.
class X11Server : public DisplayServer {
    Q_OBJECT

public:
    X11Server();

    LinuxKeyboardLayout &keyboardLayout() override { return m_keyboard; }
    std::unique_ptr<HotkeyRegistrar> makeHotkeyRegistrar() override;
    std::unique_ptr<TrayHost> makeTray(TitlePainter &painter) override;
    ThemeSettings themeSettings() const override { return m_settings.values(); }

    bool isComposited() override;
    bool mayBypassWindowManager() override;
    std::unique_ptr<PopupWatch> makePopupWatch() override;
    QRect windowAt(QPoint place) override;
    std::optional<bool> isOnPresentWorkspace(const QWindow &window) override;

    void setInputRegion(QWindow &window, const QRect &region) override;
    void setFrameExtents(QWindow &window, const QMargins &margins) override;
    void skipTaskBar(const QWindow &window) override;
    void setDarkTitleBar(const QWindow &window, bool isDark) override;
    void demandFocus(const QWindow &window) override;

private:
    /// Whether it is the one that Qt's windows are on.
    bool hasWindows() const { return m_connection.isOpen() && isOnX11(); }

    X11Connection m_connection;
    X11KeyboardLayout m_keyboard{m_connection};
    XSettings m_settings{m_connection};
};
