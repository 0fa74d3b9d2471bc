#include "Platform/Linux/Tray/XembedManager.h"

#include <algorithm>

namespace {

quint8 depthOfVisual(const xcb_screen_t &screen, xcb_visualid_t visual)
{
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        const int count = xcb_depth_visuals_length(depth.data);
        const xcb_visualtype_t *visuals = xcb_depth_visuals(depth.data);
        if (std::any_of(visuals, visuals + count,
                        [visual](const xcb_visualtype_t &v) { return v.visual_id == visual; }))
            return depth.data->depth;
    }
    return 0;
}

} // namespace

XembedManager::XembedManager(X11Connection &connection, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_selection(connection, "_NET_SYSTEM_TRAY", XCB_EVENT_MASK_NO_EVENT)
{
    connect(&m_selection, &X11Selection::ownerChanged, this, [this] {
        readVisual();
        emit windowChanged();
    });
    readVisual();
}

void XembedManager::readVisual()
{
    if (window() == XCB_WINDOW_NONE)
        return;
    const QList<quint32> visual = m_connection.words(
        window(), m_connection.atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID);
    m_visual = visual.isEmpty() ? 0 : visual.first();
    m_depth = depthOfVisual(m_connection.screen(), m_visual);
    if (m_depth == 0) {
        m_visual = m_connection.screen().root_visual;
        m_depth = m_connection.screen().root_depth;
    }
}
