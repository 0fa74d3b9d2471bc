#include "Platform/Linux/Tray/Xembed/Window.h"

#include <array>
#include <span>
#include <utility>

// The messages and properties are those of the XEmbed Protocol Specification and of the System Tray
// Protocol Specification of freedesktop.org.

namespace {

constexpr quint32 XembedMapped = 1;
constexpr quint32 XembedVersion = 0;
constexpr quint32 SystemTrayRequestDock = 0;
constexpr quint8 ColorDepth = 24;
constexpr quint8 AlphaDepth = 32;

/// The fields of WM_SIZE_HINTS up to the base size; all else is zero.
using SizeHints = std::array<quint32, 18>;
constexpr quint32 SizeHintMinimum = 1U << 4;

/// The median of each part. A title covers less than half of its item, which leaves the panel.
QColor middleColor(std::span<const QRgb> pixels)
{
    const auto middle = [&](int shift) {
        std::array<std::size_t, 256> counts{};
        for (const QRgb pixel : pixels)
            ++counts[pixel >> shift & 0xff];
        std::size_t passed = 0;
        std::size_t value = 0;
        while ((passed += counts[value]) * 2 < pixels.size())
            ++value;
        return static_cast<int>(value);
    };
    return QColor(middle(16), middle(8), middle(0), middle(24));
}

} // namespace

XembedWindow::XembedWindow(X11Connection &connection)
    : m_connection(connection)
    , m_picture(connection)
{
}

QRect XembedWindow::place(QSize size) const
{
    const auto reply = m_connection.awaitReply(
        xcb_translate_coordinates_reply,
        xcb_translate_coordinates(m_connection.xcb(), m_window, m_connection.screen().root, 0, 0));
    return reply ? QRect(QPoint(reply->dst_x, reply->dst_y), size) : QRect();
}

void XembedWindow::open(const XembedManager &manager, QSize size)
{
    xcb_connection_t *xcb = m_connection.xcb();
    m_depth = manager.depth();
    m_window = xcb_generate_id(xcb);
    m_colormap = xcb_generate_id(xcb);
    xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, m_colormap, m_connection.screen().root,
                        manager.visual());

    constexpr quint32 events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY
        | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW
        | XCB_EVENT_MASK_LEAVE_WINDOW;
    const std::array<quint32, 4> values{0, 0, events, m_colormap};
    xcb_create_window(xcb, m_depth, m_window, m_connection.screen().root, 0, 0,
                      static_cast<quint16>(size.width()), static_cast<quint16>(size.height()), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, manager.visual(),
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());

    m_picture.open(m_window, manager.visual());
    const std::array<quint32, 2> embed{XembedVersion, XembedMapped};
    const xcb_atom_t info = m_connection.atom("_XEMBED_INFO");
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, info, info, 32, embed.size(),
                        embed.data());
    constexpr char name[] = "meterkin\0Meterkin";
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        sizeof name, name);
}

void XembedWindow::requestDock(const XembedManager &manager)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = manager.window();
    message.type = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = SystemTrayRequestDock;
    message.data.data32[2] = m_window;
    xcb_send_event(m_connection.xcb(), 0, manager.window(), XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_connection.xcb());
}

void XembedWindow::close()
{
    m_picture.close();
    if (isOpen() && m_connection.isOpen()) {
        xcb_destroy_window(m_connection.xcb(), m_window);
        xcb_free_colormap(m_connection.xcb(), m_colormap);
        xcb_flush(m_connection.xcb());
    }
    m_window = XCB_WINDOW_NONE;
    m_colormap = XCB_NONE;
    m_requestedSize = {};
}

bool XembedWindow::requestSize(QSize size)
{
    if (std::exchange(m_requestedSize, size) == size)
        return false;
    // Some panels keep the shape asked for rather than the width, so both sides have to be right.
    SizeHints hints{};
    hints[0] = SizeHintMinimum;
    hints[5] = static_cast<quint32>(size.width());
    hints[6] = static_cast<quint32>(size.height());
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_window,
                        XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(),
                        hints.data());
    const std::array<quint32, 2> values{hints[5], hints[6]};
    xcb_configure_window(m_connection.xcb(), m_window,
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
    return true;
}

void XembedWindow::setName(const QString &name)
{
    const QByteArray text = name.toUtf8();
    const xcb_atom_t utf8 = m_connection.atom("UTF8_STRING");
    for (const xcb_atom_t property :
         {static_cast<xcb_atom_t>(XCB_ATOM_WM_NAME), m_connection.atom("_NET_WM_NAME")})
        xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_window, property, utf8, 8,
                            static_cast<quint32>(text.size()), text.constData());
}

void XembedWindow::draw(const QImage &image, QPoint position)
{
    takeParentBackground();
    m_picture.draw(image, position);
}

std::optional<QColor> XembedWindow::background(QSize size) const
{
    xcb_connection_t *xcb = m_connection.xcb();
    // Not from the screen: a compositor may draw that by itself.
    xcb_window_t panel = m_window;
    while (const auto reply =
               m_connection.awaitReply(xcb_query_tree_reply, xcb_query_tree(xcb, panel))) {
        if (reply->parent == reply->root || reply->parent == XCB_WINDOW_NONE)
            break;
        panel = reply->parent;
    }
    const auto place = m_connection.awaitReply(
        xcb_translate_coordinates_reply, xcb_translate_coordinates(xcb, m_window, panel, 0, 0));
    if (!place)
        return std::nullopt;
    const auto width = static_cast<quint16>(size.width());
    const auto height = static_cast<quint16>(size.height());
    const auto image =
        m_connection.awaitReply(xcb_get_image_reply,
                                xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, panel, place->dst_x,
                                              place->dst_y, width, height, ~0U));
    if (!image)
        return std::nullopt;
    const auto *begin = reinterpret_cast<const QRgb *>(xcb_get_image_data(image.get()));
    const auto length = static_cast<std::size_t>(xcb_get_image_data_length(image.get()));
    const std::span pixels(begin, length / sizeof(QRgb));
    // Eight bits for a colour, in pixels of 32.
    if ((image->depth != ColorDepth && image->depth != AlphaDepth)
        || pixels.size() != static_cast<std::size_t>(width) * height)
        return std::nullopt;
    const QColor middle = middleColor(pixels);
    const bool isOpaque = image->depth != AlphaDepth || middle.alpha() == 255;
    return isOpaque ? std::optional(QColor::fromRgb(middle.rgb())) : std::nullopt;
}

void XembedWindow::takeParentBackground()
{
    if (m_depth == AlphaDepth)
        return;
    constexpr quint32 parentRelative = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(m_connection.xcb(), m_window, XCB_CW_BACK_PIXMAP, &parentRelative);
}
