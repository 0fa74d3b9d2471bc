#include "Platform/Linux/Windows/PopoverContainer.h"

#include "Platform/Linux/Display/ActivationToken.h"
#include "Platform/Linux/Display/Server.h"
#include "Platform/Linux/Windows/Panels.h"
#include "Platform/Log.h"

#include <QCursor>
#include <QGuiApplication>

#include <utility>

namespace {

constexpr int ForgetMilliseconds = 20000;

} // namespace

LinuxPopoverContainer::LinuxPopoverContainer(DisplayServer &displayServer, QObject *parent)
    : QObject(parent)
    , m_displayServer(displayServer)
    , m_watch(displayServer.makePopupWatch())
{
    m_clock.start();
    m_placeSoon.setSingleShot(true);
    connect(&m_placeSoon, &QTimer::timeout, this, &LinuxPopoverContainer::place);
    m_forgetLater.setSingleShot(true);
    m_forgetLater.setTimerType(Qt::VeryCoarseTimer);
    m_forgetLater.setInterval(ForgetMilliseconds);
    connect(&m_forgetLater, &QTimer::timeout, this, &LinuxPopoverContainer::forgetWindow);
    connect(m_watch.get(), &PopupWatch::pressed, this, &LinuxPopoverContainer::closeByPress);
    connect(m_watch.get(), &PopupWatch::released, this,
            [this] { m_guard.released(m_clock.elapsed()); });
    connect(m_watch.get(), &PopupWatch::left, this, &LinuxPopoverContainer::startClosing);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &LinuxPopoverContainer::close);
    connect(&displayServer, &DisplayServer::closed, this, [this] {
        startClosing();
        forgetWindow(); // it works only with the connection
    });
}

LinuxPopoverContainer::~LinuxPopoverContainer() = default;

void LinuxPopoverContainer::setContent(MakeContent make)
{
    close();
    forgetWindow();
    m_make = std::move(make);
}

bool LinuxPopoverContainer::swallowsClick(const QRect &item)
{
    return m_guard.swallows(item, m_clock.elapsed());
}

void LinuxPopoverContainer::show(const QRect &item)
{
    if (m_isShown || !m_make)
        return;
    if (QGuiApplication::primaryScreen() == nullptr) {
        qCWarning(logWindows, "No screen is connected: the dashboard stays closed");
        return;
    }
    if (LayerShell *shell = layerShell(); shell != nullptr && !shell->isAvailable()) {
        // The compositor is asked at the first time. It answers at once.
        disconnect(m_answer);
        m_answer = connect(shell, &LayerShell::known, this, [this, item] { show(item); });
        return;
    }
    disconnect(m_answer);
    const FrameStyle style =
        m_displayServer.isComposited() ? FrameStyle::Rounded : FrameStyle::Square;
    if (!m_window || m_window->style() != style)
        makeWindow(style);
    if (!m_window)
        return;
    m_forgetLater.stop();
    m_isShown = true;
    m_isFocusDue = true;
    if (!m_layer) {
        findSurroundings(item);
        place();
        showWindow();
    } else if (m_layer->isOpen()) { // its animation out has not ended
        m_window->animateIn();
    } else {
        m_layer->open(m_seenItem.isEmpty() ? item : m_seenItem);
    }
}

void LinuxPopoverContainer::showWindow()
{
    const bool isOnScreen = m_window->isExposed(); // its animation out has not ended
    if (!m_bypassesWindowManager && !isOnScreen)
        m_displayServer.skipTaskBar(*m_window);
    m_window->show();
    m_window->raise();
    m_window->animateIn();
    watch();
    if (!m_bypassesWindowManager)
        activateWindow(*m_window);
    if (isOnScreen)
        handleExposure();
}

void LinuxPopoverContainer::close()
{
    disconnect(m_answer);
    if (!m_isShown)
        return;
    m_watch->giveKeyboardBack();
    spendActivationToken(*m_window);
    startClosing();
}

void LinuxPopoverContainer::makeWindow(FrameStyle style)
{
    m_watch->giveKeyboardBack();
    forgetWindow();
    m_bypassesWindowManager = m_displayServer.mayBypassWindowManager();
    LayerShell *shell = layerShell();
    const bool hasLayers = shell != nullptr && shell->isAvailable().value_or(false);
    qCDebug(logWindows, "popover: %s, %s",
            m_bypassesWindowManager ? "on X11, past the window manager"
                : hasLayers         ? "in the compositor's layer shell"
                                    : "placed and focused by the compositor",
            style == FrameStyle::Rounded ? "transparent" : "opaque, since nothing composites");
    // On X11 no tool or menu: some compositors refuse the keyboard to these.
    const Qt::WindowFlags flags = m_bypassesWindowManager || hasLayers
        ? Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint
        : Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    std::unique_ptr<QQuickItem> content = m_make();
    if (!content)
        return;
    for (const auto signal :
         {&QQuickItem::implicitWidthChanged, &QQuickItem::implicitHeightChanged})
        connect(content.get(), signal, this, [this] { m_placeSoon.start(0); });
    m_window = std::make_unique<PopoverWindow>(std::move(content), style, flags);
    connect(m_window.get(), &PopoverWindow::exposed, this, &LinuxPopoverContainer::handleExposure);
    connect(m_window.get(), &PopoverWindow::hidden, this, &LinuxPopoverContainer::handleHidden);
    if (hasLayers) {
        m_layer = std::make_unique<PopoverLayer>(*shell, *m_window);
        connect(m_layer.get(), &PopoverLayer::ready, this, [this] {
            limitInputToFrame();
            showWindow();
        });
        connect(m_layer.get(), &PopoverLayer::dismissed, this,
                &LinuxPopoverContainer::startClosing);
    }
    // The window manager may have moved it.
    connect(m_window.get(), &QWindow::xChanged, this, &LinuxPopoverContainer::watch);
    connect(m_window.get(), &QWindow::yChanged, this, &LinuxPopoverContainer::watch);
    if (!m_bypassesWindowManager) {
        connect(m_window.get(), &QWindow::activeChanged, this, [this] {
            if (!m_window->isActive())
                closeByPress(std::nullopt);
        });
    }
}

void LinuxPopoverContainer::findSurroundings(const QRect &item)
{
    const QPoint cursor = QCursor::pos();
    m_screen = item.isEmpty() ? nullptr : QGuiApplication::screenAt(item.center());
    QRect place = item;
    if (m_screen == nullptr) {
        m_screen = QGuiApplication::screenAt(cursor);
        const QRect panel = panelAt(m_displayServer, cursor);
        if (m_screen == nullptr
            || (panel.isEmpty() && m_screen->availableGeometry().contains(cursor)))
            m_screen = QGuiApplication::primaryScreen();
        place = likelyItem(m_screen->geometry(), freeGeometry(m_displayServer, *m_screen), cursor,
                           panel);
    }
    disconnect(m_screenChange);
    m_screenChange =
        connect(m_screen, &QScreen::geometryChanged, this, &LinuxPopoverContainer::close);
    m_surroundings = {place, panelAt(m_displayServer, place.center()), m_screen->geometry(),
                      freeGeometry(m_displayServer, *m_screen)};
}

void LinuxPopoverContainer::place()
{
    if (m_layer) {
        m_layer->place();
        limitInputToFrame();
        return;
    }
    if (!m_window || !m_screen)
        return;
    m_window->place(placePopover(m_surroundings, m_window->contentSize()), *m_screen);
    if (!m_bypassesWindowManager) {
        // Tiling compositors let windows of a fixed size float.
        m_window->setMinimumSize(m_window->size());
        m_window->setMaximumSize(m_window->size());
        m_displayServer.setFrameExtents(*m_window, QMargins() + m_window->margin());
    }
    limitInputToFrame();
    if (m_window->isVisible())
        watch();
}

void LinuxPopoverContainer::handleExposure()
{
    if (m_bypassesWindowManager && m_isShown && std::exchange(m_isFocusDue, false))
        m_watch->takeKeyboard(*m_window);
}

void LinuxPopoverContainer::limitInputToFrame()
{
    const QRect frame = m_window->frameRect();
    m_displayServer.setInputRegion(*m_window, frame);
    if (QGuiApplication::platformName() == u"wayland")
        m_window->setMask(frame); // there a mask limits only the input
}

void LinuxPopoverContainer::watch()
{
    if (m_isShown)
        m_watch->start(*m_window, m_window->frameRect());
}

void LinuxPopoverContainer::closeByPress(std::optional<QPoint> place)
{
    if (!m_isShown)
        return;
    m_guard.closedByPress(place, m_clock.elapsed());
    startClosing();
}

void LinuxPopoverContainer::startClosing()
{
    if (!std::exchange(m_isShown, false))
        return;
    m_isFocusDue = false;
    m_watch->stop();
    m_window->animateOut();
}

void LinuxPopoverContainer::handleHidden()
{
    m_watch->giveKeyboardBack();
    if (m_layer) {
        if (!m_layer->seenItem().isEmpty())
            m_seenItem = m_layer->seenItem();
        m_layer->close();
    } else {
        m_window->hide();
    }
    m_forgetLater.start();
}

void LinuxPopoverContainer::forgetWindow()
{
    m_layer.reset();
    m_window.reset();
}
