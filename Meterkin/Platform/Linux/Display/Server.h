#pragma once

#include "Platform/Linux/Hotkey/KeyboardLayout.h"

#include <QMargins>
#include <QObject>
#include <QRect>
#include <QString>

#include <memory>
#include <optional>

class HotkeyRegistrar;
class PopupWatch;
class QWindow;
class TitlePainter;
class TrayHost;

/// Whether Qt's windows are those of an X server.
bool isOnX11();

/// Whether the desktop is one of Wayland, also where Qt is on its X server: that knows nothing of
/// input outside of X windows.
bool isWaylandDesktop();

/// Those settings of an X11 desktop that the program follows.
struct ThemeSettings {
    QString name; ///< of the theme; empty when none is named
    bool isAnimated = true;

    bool operator==(const ThemeSettings &) const = default;
};

/// What the program does at an X server past Qt. This class itself is for a session without one:
/// it leaves all to Qt and the compositor. Main thread only.
class DisplayServer : public QObject {
    Q_OBJECT

public:
    /// The session's server, whether it is there or not.
    static std::unique_ptr<DisplayServer> make();

    using QObject::QObject;

    virtual LinuxKeyboardLayout &keyboardLayout() { return m_keyboardLayout; }
    /// Null where there are no hot keys of an X session.
    virtual std::unique_ptr<HotkeyRegistrar> makeHotkeyRegistrar();
    /// Null where no panel can be one of X11. The painter outlives it.
    virtual std::unique_ptr<TrayHost> makeTray(TitlePainter &painter);
    virtual ThemeSettings themeSettings() const { return {}; }

    /// Whether windows may be transparent at the moment.
    virtual bool isComposited();
    /// Whether a window may place itself past the window manager and still have the keyboard: on
    /// X11 and under the Xwayland of compositors that are made with wlroots, such as sway, where
    /// other ways lead to the middle of the screen. Other compositors give such a window no
    /// keyboard.
    virtual bool mayBypassWindowManager() { return false; }
    virtual std::unique_ptr<PopupWatch> makePopupWatch();
    /// The top-level window at a place, as far as it is on that screen, both in logical pixels of
    /// the desktop; empty when there is none.
    virtual QRect windowAt(QPoint /*place*/) { return QRect(); }
    /// Absent where that cannot be told.
    virtual std::optional<bool> isOnPresentWorkspace(const QWindow &window);

    // What window managers are told of a window beyond what Qt tells them. What is told before it
    // is shown is known when it is mapped. In logical pixels.

    /// Presses outside of that part of the window go to the windows below.
    virtual void setInputRegion(QWindow & /*window*/, const QRect & /*region*/) { }
    /// The width of the transparent margin around the window's frame. Window managers that keep
    /// windows off their panels would keep the margin off, too.
    virtual void setFrameExtents(QWindow & /*window*/, const QMargins & /*margins*/) { }
    /// Before each show: in no task bar, pager or window switcher.
    virtual void skipTaskBar(const QWindow & /*window*/) { }
    /// Whether the title bar is to be dark, where the window manager can choose.
    virtual void setDarkTitleBar(const QWindow & /*window*/, bool /*isDark*/) { }
    /// Asks for the focus as a pager does, to which window managers grant it.
    virtual void demandFocus(const QWindow & /*window*/) { }

signals:
    void themeSettingsChanged();
    /// It has ended, and with it all that only it does.
    void closed();

private:
    LinuxKeyboardLayout m_keyboardLayout;
};
