#include "Platform/Linux/X11/PressCatcher.h"

#include <xcb/shape.h>

#include <algorithm>
#include <array>

namespace {

constexpr quint8 TransparentDepth = 32;

// Compositors take a window of exactly the screen's size for a program in full screen: GNOME hides
// its panel.
constexpr int Excess = 1; // pixels beyond each edge

/// A visual with an alpha channel; 0 when the server has none.
xcb_visualid_t alphaVisual(const xcb_screen_t &screen)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        if (depth.data->depth == TransparentDepth && xcb_depth_visuals_length(depth.data) > 0)
            return xcb_depth_visuals(depth.data)->visual_id;
    }
    return 0;
}

xcb_rectangle_t rectangle(int left, int top, int right, int bottom)
{
    return {static_cast<qint16>(left), static_cast<qint16>(top),
            static_cast<quint16>(std::max(right - left, 0)),
            static_cast<quint16>(std::max(bottom - top, 0))};
}

} // namespace

X11PressCatcher::X11PressCatcher(X11Connection &connection)
    : m_connection(connection)
{
}

X11PressCatcher::~X11PressCatcher()
{
    close();
}

void X11PressCatcher::open(const QRect &hole)
{
    const bool isNew = m_window == XCB_WINDOW_NONE;
    if (isNew)
        create();
    if (m_window == XCB_WINDOW_NONE)
        return;
    // The screen's size may have changed since the connection was made.
    const auto root = m_connection.awaitReply(
        xcb_get_geometry_reply, xcb_get_geometry(m_connection.xcb(), m_connection.screen().root));
    if (!root)
        return;
    const std::array<quint32, 2> size{root->width + 2U * Excess, root->height + 2U * Excess};
    xcb_configure_window(m_connection.xcb(), m_window,
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    // Above, beside and below the hole.
    const QRect inside = hole.translated(Excess, Excess);
    const auto width = static_cast<int>(size[0]);
    const auto height = static_cast<int>(size[1]);
    const int right = inside.left() + inside.width();
    const int bottom = inside.top() + inside.height();
    const std::array around{
        rectangle(0, 0, width, inside.top()), rectangle(0, inside.top(), inside.left(), bottom),
        rectangle(right, inside.top(), width, bottom), rectangle(0, bottom, width, height)};
    xcb_shape_rectangles(m_connection.xcb(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, m_window, 0, 0, around.size(), around.data());
    if (isNew)
        xcb_map_window(m_connection.xcb(), m_window);
    xcb_flush(m_connection.xcb());
}

void X11PressCatcher::close()
{
    if (m_window != XCB_WINDOW_NONE && m_connection.isOpen()) {
        xcb_destroy_window(m_connection.xcb(), m_window);
        xcb_free_colormap(m_connection.xcb(), m_colormap);
        xcb_flush(m_connection.xcb());
    }
    m_window = XCB_WINDOW_NONE;
}

void X11PressCatcher::create()
{
    const xcb_screen_t &screen = m_connection.screen();
    const xcb_visualid_t visual = alphaVisual(screen);
    if (visual == 0)
        return;
    xcb_connection_t *xcb = m_connection.xcb();
    m_window = xcb_generate_id(xcb);
    m_colormap = xcb_generate_id(xcb);
    xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, m_colormap, screen.root, visual);
    constexpr quint32 transparent = 0;
    constexpr quint32 bypassesWindowManager = 1;
    const std::array<quint32, 5> values{transparent, transparent, bypassesWindowManager,
                                        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE,
                                        m_colormap};
    xcb_create_window(xcb, TransparentDepth, m_window, screen.root, -Excess, -Excess, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT
                          | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());
    // A kind of window to which no compositor gives the keyboard.
    const xcb_atom_t kind = m_connection.atom("_NET_WM_WINDOW_TYPE_NOTIFICATION");
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &kind);
}
