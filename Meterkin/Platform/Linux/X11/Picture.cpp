#include "Platform/Linux/X11/Picture.h"

#include "Platform/Log.h"

namespace {

constexpr quint8 AlphaDepth = 32;

/// The layout of QImage::Format_ARGB32_Premultiplied.
bool isArgb(const xcb_render_pictforminfo_t &format)
{
    const xcb_render_directformat_t &direct = format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == AlphaDepth
        && direct.alpha_mask == 0xff && direct.alpha_shift == 24 && direct.red_shift == 16
        && direct.green_shift == 8 && direct.blue_shift == 0;
}

} // namespace

X11Picture::X11Picture(X11Connection &connection)
    : m_connection(connection)
{
}

void X11Picture::open(xcb_window_t window, xcb_visualid_t visual)
{
    const Formats formats = formatsFor(visual);
    if (formats.argb == 0 || formats.window == 0) {
        qCWarning(logTray,
                  "The X server's RENDER extension has no format for visual 0x%x: the item in "
                  "the panel stays blank",
                  visual);
        return;
    }
    m_argb = formats.argb;
    m_window = window;
    m_picture = xcb_generate_id(m_connection.xcb());
    xcb_render_create_picture(m_connection.xcb(), m_picture, window, formats.window, 0, nullptr);
}

void X11Picture::close()
{
    if (m_picture != XCB_NONE && m_connection.isOpen())
        xcb_render_free_picture(m_connection.xcb(), m_picture);
    m_picture = XCB_NONE;
}

void X11Picture::draw(const QImage &image, QPoint position) const
{
    if (m_picture == XCB_NONE)
        return;
    xcb_connection_t *xcb = m_connection.xcb();
    const xcb_pixmap_t pixmap = xcb_generate_id(xcb);
    const xcb_gcontext_t context = xcb_generate_id(xcb);
    const xcb_render_picture_t source = xcb_generate_id(xcb);
    const auto width = static_cast<quint16>(image.width());
    const auto height = static_cast<quint16>(image.height());
    xcb_create_pixmap(xcb, AlphaDepth, pixmap, m_window, width, height);
    xcb_create_gc(xcb, context, pixmap, 0, nullptr);
    xcb_put_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height, 0, 0, 0,
                  AlphaDepth, static_cast<quint32>(image.sizeInBytes()), image.constBits());
    xcb_render_create_picture(xcb, source, pixmap, m_argb, 0, nullptr);
    xcb_clear_area(xcb, 0, m_window, 0, 0, 0, 0);
    xcb_render_composite(xcb, XCB_RENDER_PICT_OP_OVER, source, XCB_NONE, m_picture, 0, 0, 0, 0,
                         static_cast<qint16>(position.x()), static_cast<qint16>(position.y()),
                         width, height);
    xcb_render_free_picture(xcb, source);
    xcb_free_gc(xcb, context);
    xcb_free_pixmap(xcb, pixmap);
}

X11Picture::Formats X11Picture::formatsFor(xcb_visualid_t visual) const
{
    Formats formats;
    const auto reply = m_connection.awaitReply(xcb_render_query_pict_formats_reply,
                                               xcb_render_query_pict_formats(m_connection.xcb()));
    if (!reply)
        return formats;
    auto format = xcb_render_query_pict_formats_formats_iterator(reply.get());
    for (; format.rem > 0; xcb_render_pictforminfo_next(&format)) {
        if (isArgb(*format.data))
            formats.argb = format.data->id;
    }
    auto screen = xcb_render_query_pict_formats_screens_iterator(reply.get());
    for (; screen.rem > 0; xcb_render_pictscreen_next(&screen)) {
        auto depth = xcb_render_pictscreen_depths_iterator(screen.data);
        for (; depth.rem > 0; xcb_render_pictdepth_next(&depth)) {
            auto candidate = xcb_render_pictdepth_visuals_iterator(depth.data);
            for (; candidate.rem > 0; xcb_render_pictvisual_next(&candidate)) {
                if (candidate.data->visual == visual)
                    formats.window = candidate.data->format;
            }
        }
    }
    return formats;
}
