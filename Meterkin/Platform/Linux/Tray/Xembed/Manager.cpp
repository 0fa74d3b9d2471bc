#include "Platform/Linux/Tray/Xembed/Manager.h"

#include "Platform/Linux/Tray/ProcessName.h"
#include "Platform/Log.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char *orientationName = "_NET_SYSTEM_TRAY_ORIENTATION";
constexpr const char *colorsName = "_NET_SYSTEM_TRAY_COLORS";
constexpr quint32 Vertical = 1;

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
    , m_selection(connection, "_NET_SYSTEM_TRAY", XCB_EVENT_MASK_PROPERTY_CHANGE)
{
    connect(&m_connection, &X11Connection::eventReceived, this, &XembedManager::handleEvent);
    connect(&m_selection, &X11Selection::ownerChanged, this, [this] {
        readAll();
        emit windowChanged();
    });
    readAll();
}

void XembedManager::handleEvent(const xcb_generic_event_t *event)
{
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
        return;
    const auto &change = xcbEvent<xcb_property_notify_event_t>(event);
    if (change.window != window())
        return;
    if (change.atom == m_connection.atom(colorsName)) {
        emit colorsChanged();
    } else if (change.atom == m_connection.atom(orientationName)) {
        if (readOrientation())
            emit windowChanged();
    }
}

void XembedManager::readAll()
{
    if (window() == XCB_WINDOW_NONE) {
        qCDebug(logTray, "There is no X11 tray: %s",
                m_connection.isOpen() ? "no panel offers one" : "there is no X server");
        return;
    }
    readVisual();
    readOrientation();
    readWindowManager();
    if (!logTray().isDebugEnabled())
        return;
    const QString name = processName(words("_NET_WM_PID", XCB_ATOM_CARDINAL).value(0));
    qCDebug(logTray, "The X11 tray is window 0x%x of %s, %d bits deep", window(),
            name.isEmpty() ? "a panel that does not tell its name" : qUtf8Printable(name), m_depth);
}

QList<quint32> XembedManager::words(const char *property, xcb_atom_t type) const
{
    return m_connection.words(window(), m_connection.atom(property), type);
}

void XembedManager::readVisual()
{
    m_visual = words("_NET_SYSTEM_TRAY_VISUAL", XCB_ATOM_VISUALID).value(0);
    m_depth = depthOfVisual(m_connection.screen(), m_visual);
    if (m_depth == 0) {
        m_visual = m_connection.screen().root_visual;
        m_depth = m_connection.screen().root_depth;
    }
}

bool XembedManager::readOrientation()
{
    const bool isVertical = words(orientationName, XCB_ATOM_CARDINAL).value(0) == Vertical;
    return std::exchange(m_isVertical, isVertical) != isVertical;
}

std::optional<QColor> XembedManager::textColor() const
{
    // Red, green and blue of each in 16 bits; that of texts comes first.
    const QList<quint32> colors = words(colorsName, XCB_ATOM_CARDINAL);
    const auto part = [&](qsizetype index) { return static_cast<int>(colors[index] >> 8 & 0xff); };
    if (colors.size() < 3)
        return std::nullopt;
    const QColor color(part(0), part(1), part(2));
    // A shell says black before it has read its own style.
    return m_isWindowManager && color == Qt::black ? std::nullopt : std::optional(color);
}

void XembedManager::readWindowManager()
{
    const xcb_window_t manager =
        m_connection
            .words(m_connection.screen().root, m_connection.atom("_NET_SUPPORTING_WM_CHECK"),
                   XCB_ATOM_WINDOW)
            .value(0);
    // What is left of a resource without these bits tells the program that has made it.
    const quint32 ownPart = xcb_get_setup(m_connection.xcb())->resource_id_mask;
    m_isWindowManager = (manager & ~ownPart) == (window() & ~ownPart);
}
