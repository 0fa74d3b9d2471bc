#pragma once

#include "Platform/Linux/Windows/PopoverWindow.h"
#include "Platform/Linux/X11/Focus.h"
#include "Platform/PopoverContainer.h"
#include "Platform/ReopenGuard.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QScreen>
#include <QTimer>

/// The popover of a Linux desktop. On X11 it places itself and takes the keyboard whatever the
/// window manager thinks; under Xwayland it asks for both; on Wayland the compositor places it.
/// Window and content live from the first show until some time after the last.
class LinuxPopoverContainer : public QObject, public PopoverContainer {
    Q_OBJECT

public:
    /// The connection outlives it and may be closed.
    explicit LinuxPopoverContainer(X11Connection &connection, QObject *parent = nullptr);
    ~LinuxPopoverContainer() override;

    void setContent(MakeContent make) override;
    bool isShown() const override { return m_shown; }
    bool swallowsClick(const QRect &item) override;
    void show(const QRect &item) override;
    void close() override;

private:
    bool onX11() const;
    /// Whether it goes past the window manager, which is how it is exact and quick on X11.
    bool takesFocusItself() const;
    void makeWindow(FrameStyle style);
    void lookAround(const QRect &item);
    void place();
    /// Presses on the shadow are for what is below.
    void leaveShadowToOthers();
    void handleExposure();
    void handlePress();
    void handleFocusLoss();
    void closeByPress(std::optional<QPoint> place);
    void startClosing();
    void handleHidden();

    X11Connection &m_connection;
    X11Presses m_presses;
    X11Focus m_focus;
    MakeContent m_make;
    std::unique_ptr<PopoverWindow> m_window;
    PopoverSurroundings m_surroundings;
    QPointer<QScreen> m_screen; ///< the item's
    QMetaObject::Connection m_screenChange;
    ReopenGuard m_guard;
    QElapsedTimer m_clock;
    QTimer m_placeSoon;
    QTimer m_forgetLater;
    bool m_shown = false;
    bool m_wantsFocus = false; ///< once it is on the screen
};
