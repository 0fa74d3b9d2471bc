#include "Platform/Linux/Tray/XembedIcon.h"

#include "Platform/Linux/X11/ScreenCoordinates.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr int DefaultHeight = 24; // logical pixels, until the panel says otherwise
constexpr int SettleMilliseconds = 250; // panels resize an item in two or three steps
constexpr int DockMilliseconds = 3000; // a panel that is just starting may be slow to answer
constexpr int RetryMilliseconds = 30000; // until a panel that did not answer is asked again
constexpr int LossMilliseconds = 1000; // until a panel that dropped the item is asked again
constexpr double LeastGrant = 0.85; // of the wanted width: the padding can be spared, digits cannot
constexpr quint32 XembedMapped = 1;
constexpr quint32 XembedVersion = 0;
constexpr quint32 SystemTrayRequestDock = 0;
constexpr quint8 LeftButton = 1;
constexpr quint8 RightButton = 3;
constexpr quint8 AlphaDepth = 32;

/// The fields of WM_SIZE_HINTS up to the base size; all else is zero.
using SizeHints = std::array<quint32, 18>;
constexpr quint32 SizeHintMinimum = 1U << 4;

} // namespace

XembedIcon::XembedIcon(X11Connection &connection, TitlePainter &painter, QObject *parent)
    : TrayHost(parent)
    , m_connection(connection)
    , m_painter(painter)
    , m_manager(connection)
    , m_picture(connection)
{
    m_settleTimer.setSingleShot(true);
    connect(&m_settleTimer, &QTimer::timeout, this, &XembedIcon::settle);
    m_retryTimer.setSingleShot(true);
    connect(&m_retryTimer, &QTimer::timeout, this, [this] { setRefused(false); });
    if (!m_connection.isOpen())
        return;
    connect(&m_connection, &X11Connection::eventReceived, this, &XembedIcon::handleEvent);
    connect(&m_manager, &XembedManager::windowChanged, this, &XembedIcon::handleManager);
}

XembedIcon::~XembedIcon()
{
    if (m_connection.isOpen())
        detach();
}

bool XembedIcon::isAvailable() const
{
    return m_manager.window() != XCB_WINDOW_NONE && !m_refused;
}

void XembedIcon::attach()
{
    if (!isAvailable() || m_window != XCB_WINDOW_NONE)
        return;
    createWindow();
    requestDock();
    m_settleTimer.start(DockMilliseconds);
}

void XembedIcon::detach()
{
    if (m_window == XCB_WINDOW_NONE)
        return;
    xcb_destroy_window(m_connection.xcb(), m_window);
    forgetWindow();
    xcb_flush(m_connection.xcb());
}

void XembedIcon::setContent(const TrayContent &content)
{
    const TrayContent previous = std::exchange(m_content, content);
    if (m_window == XCB_WINDOW_NONE)
        return;
    if (previous.accessibilityLabel != content.accessibilityLabel)
        writeNames();
    if (previous.title != content.title) {
        requestSize();
        paint();
    }
    xcb_flush(m_connection.xcb());
}

QRect XembedIcon::geometry() const
{
    if (m_window == XCB_WINDOW_NONE || !m_embedded)
        return {};
    const auto cookie =
        xcb_translate_coordinates(m_connection.xcb(), m_window, m_connection.screen().root, 0, 0);
    const XcbReply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(m_connection.xcb(), cookie, nullptr));
    m_connection.dispatchSoon();
    if (!reply)
        return {};
    return logicalRect(QRect(QPoint(reply->dst_x, reply->dst_y), m_size));
}

void XembedIcon::handleEvent(const xcb_generic_event_t *event)
{
    const int type = event->response_type & 0x7f;
    switch (type) {
    case XCB_DESTROY_NOTIFY:
        if (xcbEvent<xcb_destroy_notify_event_t>(event).window == m_window)
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
            expose.window == m_window && expose.count == 0)
            paint();
        break;
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
        handleButton(xcbEvent<xcb_button_press_event_t>(event), type == XCB_BUTTON_RELEASE);
        break;
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        // The end of a grab, as after a click, is no coming of the pointer.
        if (const auto &crossing = xcbEvent<xcb_enter_notify_event_t>(event);
            crossing.event == m_window
            && (type == XCB_LEAVE_NOTIFY || crossing.mode == XCB_NOTIFY_MODE_NORMAL))
            emit hoverChanged(type == XCB_ENTER_NOTIFY);
        break;
    default:
        break;
    }
}

void XembedIcon::handleButton(const xcb_button_press_event_t &event, bool released)
{
    if (event.event != m_window || m_window == XCB_WINDOW_NONE)
        return;
    if (event.detail == RightButton && !released) {
        const QRect place = geometry();
        emit menuRequested(place.isEmpty() ? QPoint(event.root_x, event.root_y) : place.center());
    }
    if (event.detail != LeftButton)
        return;
    const bool inside = QRect(QPoint(), m_size).contains(event.event_x, event.event_y);
    if (std::exchange(m_pressed, !released) && released && inside)
        emit clicked();
}

void XembedIcon::handleReparent(const xcb_reparent_notify_event_t &event)
{
    if (event.window != m_window || m_window == XCB_WINDOW_NONE)
        return;
    m_embedded = event.parent != m_connection.screen().root;
    // A panel that dies may leave us behind as a stray window of the desktop.
    if (!m_embedded) {
        handleLoss();
        return;
    }
    if (m_manager.depth() != AlphaDepth) {
        // Without an alpha channel the panel's own background has to show through.
        constexpr quint32 parentRelative = XCB_BACK_PIXMAP_PARENT_RELATIVE;
        xcb_change_window_attributes(m_connection.xcb(), m_window, XCB_CW_BACK_PIXMAP,
                                     &parentRelative);
    }
    m_settleTimer.start(SettleMilliseconds);
}

void XembedIcon::handleConfigure(const xcb_configure_notify_event_t &event)
{
    if (event.window != m_window || QSize(event.width, event.height) == m_size)
        return;
    m_size = QSize(event.width, event.height);
    if (m_embedded) {
        m_settleTimer.start(SettleMilliseconds);
        requestSize();
    }
    paint();
    xcb_flush(m_connection.xcb());
}

void XembedIcon::handleLoss()
{
    // Most often the panel itself is about to go; if it is not, it gets another try.
    setRefused(true);
    m_retryTimer.start(LossMilliseconds);
}

void XembedIcon::handleManager()
{
    m_refused = false;
    m_retryTimer.stop();
    m_squeezed = false;
    if (m_connection.isOpen())
        detach();
    else
        forgetWindow();
    emit availabilityChanged();
}

void XembedIcon::createWindow()
{
    xcb_connection_t *xcb = m_connection.xcb();
    m_size = QSize(wantedWidth(), static_cast<int>(std::lround(DefaultHeight * scale())));
    m_window = xcb_generate_id(xcb);
    m_colormap = xcb_generate_id(xcb);
    xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, m_colormap, m_connection.screen().root,
                        m_manager.visual());

    constexpr quint32 events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY
        | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW
        | XCB_EVENT_MASK_LEAVE_WINDOW;
    const std::array<quint32, 4> values{0, 0, events, m_colormap};
    xcb_create_window(xcb, m_manager.depth(), m_window, m_connection.screen().root, 0, 0,
                      static_cast<quint16>(m_size.width()), static_cast<quint16>(m_size.height()),
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, m_manager.visual(),
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());

    m_picture.open(m_window, m_manager.visual());
    const std::array<quint32, 2> embed{XembedVersion, XembedMapped};
    const xcb_atom_t info = m_connection.atom("_XEMBED_INFO");
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, info, info, 32, embed.size(),
                        embed.data());
    constexpr char name[] = "meterkin\0Meterkin";
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        sizeof name, name);
    writeNames();
    requestSize();
}

void XembedIcon::forgetWindow()
{
    m_settleTimer.stop();
    m_picture.close();
    if (m_connection.isOpen() && m_colormap != XCB_NONE)
        xcb_free_colormap(m_connection.xcb(), m_colormap);
    m_window = XCB_WINDOW_NONE;
    m_colormap = XCB_NONE;
    m_embedded = false;
    m_requestedSize = {};
    m_pressed = false;
}

void XembedIcon::requestDock()
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_manager.window();
    message.type = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = SystemTrayRequestDock;
    message.data.data32[2] = m_window;
    xcb_send_event(m_connection.xcb(), 0, m_manager.window(), XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection.xcb());
}

void XembedIcon::requestSize()
{
    if (m_squeezed)
        return;
    // Some panels keep the shape asked for rather than the width, so both sides have to be right.
    const int width = wantedWidth();
    SizeHints hints{};
    hints[0] = SizeHintMinimum;
    hints[5] = static_cast<quint32>(width);
    hints[6] = static_cast<quint32>(m_size.height());
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_window,
                        XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(),
                        hints.data());
    const QSize size(width, m_size.height());
    if (std::exchange(m_requestedSize, size) == size)
        return;
    const std::array<quint32, 2> values{hints[5], hints[6]};
    xcb_configure_window(m_connection.xcb(), m_window,
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    if (m_embedded)
        m_settleTimer.start(SettleMilliseconds);
}

void XembedIcon::writeNames()
{
    const QByteArray name = m_content.accessibilityLabel.toUtf8();
    const xcb_atom_t utf8 = m_connection.atom("UTF8_STRING");
    for (const xcb_atom_t property :
         {static_cast<xcb_atom_t>(XCB_ATOM_WM_NAME), m_connection.atom("_NET_WM_NAME")})
        xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_window, property, utf8, 8,
                            static_cast<quint32>(name.size()), name.constData());
}

void XembedIcon::setRefused(bool refused)
{
    m_refused = refused;
    detach();
    emit availabilityChanged();
}

void XembedIcon::settle()
{
    if (!m_embedded) {
        setRefused(true);
        m_retryTimer.start(RetryMilliseconds);
        return;
    }
    const bool squeezed = m_size.width() < wantedWidth() * LeastGrant;
    if (std::exchange(m_squeezed, squeezed) != squeezed)
        emit squeezedChanged();
    paint();
    xcb_flush(m_connection.xcb());
}

int XembedIcon::wantedWidth() const
{
    const int height =
        m_size.isEmpty() ? static_cast<int>(std::lround(DefaultHeight * scale())) : m_size.height();
    return m_painter.wideWidth(m_content.title, height, scale());
}

double XembedIcon::scale() const
{
    return qGuiApp->devicePixelRatio();
}

void XembedIcon::paint()
{
    if (m_window == XCB_WINDOW_NONE || !m_embedded || m_size.isEmpty())
        return;
    const bool wide = !m_squeezed && m_size.width() > m_size.height();
    const QImage image = wide
        ? m_painter.wide(m_content.title, m_size.height(), scale())
        : m_painter.square(m_content.title, std::min(m_size.width(), m_size.height()));

    if (m_manager.depth() != AlphaDepth) {
        constexpr quint32 parentRelative = XCB_BACK_PIXMAP_PARENT_RELATIVE;
        xcb_change_window_attributes(m_connection.xcb(), m_window, XCB_CW_BACK_PIXMAP,
                                     &parentRelative);
    }
    m_picture.draw(
        image,
        QPoint((m_size.width() - image.width()) / 2, (m_size.height() - image.height()) / 2));
}
