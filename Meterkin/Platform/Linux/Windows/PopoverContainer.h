#pragma once

#include "Platform/Linux/Display/PopupWatch.h"
#include "Platform/Linux/Windows/PopoverLayer.h"
#include "Platform/Linux/Windows/PopoverWindow.h"
#include "Platform/PopoverContainer.h"
#include "Platform/ReopenGuard.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QScreen>
#include <QTimer>

class DisplayServer;

/// The popover of a Linux desktop. On X11 it bypasses the window manager: it places itself and
/// takes the keyboard focus. Under Xwayland it requests both from most compositors. On Wayland it
/// does so where the compositor has a layer shell; else the compositor places it.
/// Window and content exist from the first show until some time after the last.
class LinuxPopoverContainer : public QObject, public PopoverContainer {
    Q_OBJECT

public:
    /// The server outlives it.
    explicit LinuxPopoverContainer(DisplayServer &displayServer, QObject *parent = nullptr);
    ~LinuxPopoverContainer() override;

    void setContent(MakeContent make) override;
    bool isShown() const override { return m_isShown; }
    bool swallowsClick(const QRect &item) override;
    void show(const QRect &item) override;
    void close() override;

private:
    void makeWindow(FrameStyle style);
    void showWindow();
    void findSurroundings(const QRect &item);
    void place();
    /// Presses on the shadow go to the windows below.
    void limitInputToFrame();
    void watch();
    void handleExposure();
    void closeByPress(std::optional<QPoint> place);
    void startClosing();
    void handleHidden();
    void forgetWindow();

    DisplayServer &m_displayServer;
    const std::unique_ptr<PopupWatch> m_watch;
    MakeContent m_make;
    std::unique_ptr<PopoverWindow> m_window;
    std::unique_ptr<PopoverLayer> m_layer; ///< of the window, where there is a layer shell
    QRect m_seenItem; ///< by the layer: some panels tell nonsense; empty until it was
    PopoverSurroundings m_surroundings;
    QPointer<QScreen> m_screen; ///< with the item
    QMetaObject::Connection m_screenChange;
    QMetaObject::Connection m_answer; ///< the compositor's, which a show waits for
    ReopenGuard m_guard;
    QElapsedTimer m_clock;
    QTimer m_placeSoon;
    QTimer m_forgetLater;
    bool m_bypassesWindowManager = false; ///< which makes it exact and quick
    bool m_isShown = false;
    bool m_isFocusDue = false; ///< to be taken as soon as the window is on the screen
};
