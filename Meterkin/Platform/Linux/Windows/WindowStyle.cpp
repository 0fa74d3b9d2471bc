#include "Platform/Linux/Windows/WindowStyle.h"

#include "Platform/Linux/Display/Server.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QQuickWindow>

namespace {

constexpr int MiddleLightness = 128;
constexpr QColor LightTitle(0xf2, 0xf2, 0xf4);
constexpr QColor DarkTitle(0x1d, 0x1d, 0x1f);
constexpr QColor DimmedTitle(0x8a, 0x8a, 0x8e); // of a window that is not active

} // namespace

LinuxWindowStyle::LinuxWindowStyle(DisplayServer &displayServer, QObject *parent)
    : QObject(parent)
    , m_displayServer(displayServer)
{
}

void LinuxWindowStyle::makeTitled(QQuickWindow &window)
{
    // Window managers neither tile nor minimise a dialog.
    window.setFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                    | Qt::WindowCloseButtonHint);
    disconnect(&window, &QQuickWindow::colorChanged, this, nullptr); // where it is made again
    connect(&window, &QQuickWindow::colorChanged, this, [this, &window] { colorTitleBar(window); });
}

WindowStyle::TitleBar LinuxWindowStyle::makeOnboarding(QQuickWindow &window)
{
    window.setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    if (m_displayServer.isComposited())
        window.setColor(Qt::transparent);
    return TitleBar::None;
}

/// Light or dark, as the window is.
void LinuxWindowStyle::colorTitleBar(QQuickWindow &window)
{
    const bool isDark = window.color().lightness() < MiddleLightness;
    if (isOnX11()) {
        m_displayServer.setDarkTitleBar(window, isDark);
        return;
    }
    // Where the compositor draws none, Qt does, in the colours that the palette has by then.
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::Window, window.color());
    palette.setColor(QPalette::WindowText, isDark ? LightTitle : DarkTitle);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, DimmedTitle);
    QGuiApplication::setPalette(palette);
    if (window.frameMargins().isNull())
        return;
    const Qt::WindowFlags flags = window.flags();
    window.setFlags(flags | Qt::FramelessWindowHint);
    window.setFlags(flags);
}

void LinuxWindowStyle::present(QQuickWindow &window)
{
    const bool isInSight = window.isVisible() && isOnPresentWorkspace(window);
    if (!isInSight) {
        // Shown again, it is a new window to the desktop, which puts those on the present
        // workspace.
        window.hide();
        window.create();
        colorTitleBar(window);
        window.setPosition(window.position()); // else the window manager chooses another place
        window.showNormal();
    }
    window.raise();
    window.requestActivate();
    // Window managers ignore requests for a window that they do not manage yet.
    if (isInSight)
        m_displayServer.demandFocus(window);
    else
        window.installEventFilter(this);
}

void LinuxWindowStyle::presentUnasked(QQuickWindow &window)
{
    // With this property Qt's xcb plugin sets the user time to 0: window managers give no focus.
    window.setProperty("_q_showWithoutActivating", true);
    window.show();
}

/// Whether the user sees it, other windows apart.
bool LinuxWindowStyle::isOnPresentWorkspace(const QQuickWindow &window) const
{
    if (!window.isExposed())
        return false;
    return m_displayServer.isOnPresentWorkspace(window).value_or(
        window.isActive()); // Wayland and some window managers do not report workspaces
}

bool LinuxWindowStyle::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose) {
        const auto *window = static_cast<QQuickWindow *>(watched);
        if (window->isExposed()) {
            watched->removeEventFilter(this);
            m_displayServer.demandFocus(*window);
        }
    }
    return QObject::eventFilter(watched, event);
}
