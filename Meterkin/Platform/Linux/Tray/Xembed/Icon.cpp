#include "Platform/Linux/Tray/Xembed/Icon.h"

#include "Platform/Linux/Display/ScreenCoordinates.h"
#include "Platform/Linux/Tray/Title/Color.h"
#include "Platform/Log.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr int DefaultHeight = 24; // logical pixels, until the panel says otherwise
constexpr auto SettleTime = 250ms; // panels resize an item in two or three steps
constexpr auto DockTimeout = 3s; // a panel that is just starting may be slow to answer
constexpr auto LookPeriod = 30s; // for the panel's colour, at changes of the title
constexpr auto RefusalRetry = 30s; // after a panel did not take the item
constexpr auto LossRetry = 1s; // after a panel dropped the item
constexpr double LeastGrant = 0.85; // of the wanted width: the padding can be spared, digits cannot
constexpr int LeastHeight = 12; // logical pixels that a line of text needs
constexpr int LeastSide = 8; // some panels dock an item in a gap of five pixels, and widen that
constexpr quint8 LeftButton = 1;
constexpr quint8 RightButton = 3;

} // namespace

XembedIcon::XembedIcon(X11Connection &connection, TitlePainter &painter, QObject *parent)
    : TrayHost(parent)
    , m_connection(connection)
    , m_painter(painter)
    , m_manager(connection)
    , m_window(connection)
{
    m_settleTimer.setSingleShot(true);
    connect(&m_settleTimer, &QTimer::timeout, this, &XembedIcon::settle);
    m_retryTimer.setSingleShot(true);
    connect(&m_retryTimer, &QTimer::timeout, this, [this] { setRefused(false); });
    if (!m_connection.isOpen())
        return;
    connect(&m_connection, &X11Connection::eventReceived, this, &XembedIcon::handleEvent);
    connect(&m_manager, &XembedManager::windowChanged, this, &XembedIcon::handleManager);
    connect(&m_manager, &XembedManager::colorsChanged, this, &XembedIcon::lookAgain);
}

XembedIcon::~XembedIcon()
{
    m_window.close();
}

bool XembedIcon::isAvailable() const
{
    return m_manager.window() != XCB_WINDOW_NONE && !m_isRefused;
}

void XembedIcon::attach()
{
    if (!isAvailable() || m_window.isOpen())
        return;
    m_size = {};
    m_size = wantedSize();
    m_window.open(m_manager, m_size);
    m_window.setName(m_content.accessibilityLabel);
    requestSize();
    m_window.requestDock(m_manager);
    m_settleTimer.start(DockTimeout);
}

void XembedIcon::detach()
{
    m_settleTimer.stop();
    m_window.close();
    m_isEmbedded = false;
    m_isPressed = false;
    m_background.reset();
}

void XembedIcon::setContent(const TrayContent &content)
{
    const TrayContent previous = std::exchange(m_content, content);
    if (!m_window.isOpen())
        return;
    if (previous.accessibilityLabel != content.accessibilityLabel)
        m_window.setName(content.accessibilityLabel);
    if (previous.title != content.title) {
        requestSize();
        paint();
        // Some panels change their colours without a word.
        if (m_nextLook.hasExpired())
            readBackground();
    }
    xcb_flush(m_connection.xcb());
}

QRect XembedIcon::geometry() const
{
    const QRect place = m_isEmbedded ? m_window.place(m_size) : QRect();
    return place.isEmpty() ? QRect() : logicalRect(place);
}

void XembedIcon::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    switch (type) {
    case XCB_DESTROY_NOTIFY:
        if (xcbEvent<xcb_destroy_notify_event_t>(event).window == m_window.window())
            handleLoss();
        break;
    case XCB_REPARENT_NOTIFY:
        handleReparent(xcbEvent<xcb_reparent_notify_event_t>(event));
        break;
    case XCB_CONFIGURE_NOTIFY:
        handleConfigure(xcbEvent<xcb_configure_notify_event_t>(event));
        break;
    case XCB_EXPOSE:
        if (const auto &expose = xcbEvent<xcb_expose_event_t>(event);
            expose.window == m_window.window() && expose.count == 0)
            paint();
        break;
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
        handleButton(xcbEvent<xcb_button_press_event_t>(event), type == XCB_BUTTON_RELEASE);
        break;
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        // The end of a grab, as after a click, is reported too: there the pointer has not moved.
        if (const auto &crossing = xcbEvent<xcb_enter_notify_event_t>(event);
            crossing.event == m_window.window()
            && (type == XCB_LEAVE_NOTIFY || crossing.mode == XCB_NOTIFY_MODE_NORMAL))
            emit hoverChanged(type == XCB_ENTER_NOTIFY);
        break;
    default:
        break;
    }
}

void XembedIcon::handleButton(const xcb_button_press_event_t &event, bool isRelease)
{
    if (!m_window.isOpen() || event.event != m_window.window())
        return;
    if (event.detail == RightButton && !isRelease) {
        const QRect place = geometry();
        emit menuRequested(place.isEmpty() ? QPoint(event.root_x, event.root_y) : place.center());
    }
    if (event.detail != LeftButton)
        return;
    const bool isInside = QRect(QPoint(), m_size).contains(event.event_x, event.event_y);
    if (std::exchange(m_isPressed, !isRelease) && isRelease && isInside)
        emit clicked();
}

void XembedIcon::handleReparent(const xcb_reparent_notify_event_t &event)
{
    if (!m_window.isOpen() || event.window != m_window.window())
        return;
    m_isEmbedded = event.parent != m_connection.screen().root;
    // A panel that dies may leave us behind as a stray window of the desktop.
    if (!m_isEmbedded) {
        handleLoss();
        return;
    }
    m_window.takeParentBackground();
    m_settleTimer.start(SettleTime);
}

void XembedIcon::handleConfigure(const xcb_configure_notify_event_t &event)
{
    if (event.window != m_window.window() || QSize(event.width, event.height) == m_size)
        return;
    m_size = QSize(event.width, event.height);
    if (m_isEmbedded) {
        m_settleTimer.start(SettleTime);
        requestSize();
    }
    paint();
    xcb_flush(m_connection.xcb());
}

void XembedIcon::handleLoss()
{
    qCDebug(logTray, "The X11 tray has dropped the item");
    // Most often the panel itself is about to go; if it is not, the item docks again.
    setRefused(true);
    m_retryTimer.start(LossRetry);
}

void XembedIcon::handleManager()
{
    m_isRefused = false;
    m_refusals = 0;
    m_retryTimer.stop();
    m_isSqueezed = false;
    detach();
    emit availabilityChanged();
}

void XembedIcon::requestSize()
{
    if (!m_isSqueezed && m_window.requestSize(wantedSize()) && m_isEmbedded)
        m_settleTimer.start(SettleTime);
}

void XembedIcon::setRefused(bool isRefused)
{
    m_isRefused = isRefused;
    detach();
    emit availabilityChanged();
}

/// Called once the panel has had the time to dock and to resize the item.
void XembedIcon::settle()
{
    if (!m_isEmbedded) {
        // Not at the first time: a panel that is just starting may be slower still.
        if (++m_refusals == 2)
            qCWarning(logTray,
                      "The panel with the X11 tray does not take the item: it goes "
                      "elsewhere, with a retry every 30 s");
        else
            qCDebug(logTray, "The X11 tray has not docked the item in time");
        setRefused(true);
        m_retryTimer.start(RefusalRetry);
        return;
    }
    m_refusals = 0;
    const QSize wanted = wantedSize();
    const bool isSqueezed =
        m_size.width() < wanted.width() * LeastGrant || m_size.height() < LeastHeight * scale();
    qCDebug(logTray, "The X11 tray has docked the item: %d x %d pixels of %d x %d wanted, %s",
            m_size.width(), m_size.height(), wanted.width(), wanted.height(),
            isSqueezed                   ? "squeezed"
                : m_manager.isVertical() ? "upright"
                                         : "wide");
    if (std::exchange(m_isSqueezed, isSqueezed) != isSqueezed)
        emit availabilityChanged();
    paint();
    readBackground();
    xcb_flush(m_connection.xcb());
}

void XembedIcon::lookAgain()
{
    if (!m_isEmbedded)
        return;
    requestSize();
    m_settleTimer.start(SettleTime);
}

void XembedIcon::readBackground()
{
    if (!m_isEmbedded) // it has just moved elsewhere
        return;
    m_nextLook.setRemainingTime(LookPeriod);
    std::optional<QColor> background;
    if (!m_manager.isWindowManager())
        background = m_window.background(m_size);
    if (!background) {
        if (const std::optional<QColor> text = m_manager.textColor())
            background = typicalBackground(!isDarkBackground(*text));
    }
    if (std::exchange(m_background, background) != background)
        emit backgroundChanged();
}

QSize XembedIcon::wantedSize() const
{
    const int defaultHeight = static_cast<int>(std::lround(DefaultHeight * scale()));
    // An upright panel has its width to give, and some keep an item's proportions.
    if (m_manager.isVertical()) {
        const int side = m_size.isEmpty() ? defaultHeight : m_size.width();
        return QSize(side, side);
    }
    const int height = m_size.isEmpty() ? defaultHeight : m_size.height();
    return QSize(m_painter.wideWidth(m_content.title, height, scale()), height);
}

double XembedIcon::scale() const
{
    return qGuiApp->devicePixelRatio();
}

void XembedIcon::paint()
{
    if (!m_window.isOpen() || !m_isEmbedded
        || std::min(m_size.width(), m_size.height()) < LeastSide)
        return;
    const bool isWide =
        !m_isSqueezed && !m_manager.isVertical() && m_size.width() > m_size.height();
    const QImage image = isWide
        ? m_painter.wide(m_content.title, m_size.height(), scale())
        : m_painter.square(m_content.title, std::min(m_size.width(), m_size.height()));
    m_window.draw(
        image,
        QPoint((m_size.width() - image.width()) / 2, (m_size.height() - image.height()) / 2));
}
